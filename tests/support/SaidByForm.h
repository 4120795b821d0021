// What a form says, as one text.
#pragma once

#include "editors/EditorForm.h"

namespace health::test {

// The line beside a field, preceded by "+" for a good, "~" for a cautious and "!" for an error text; after "/", the
// line below.
inline Text said(Form& form, const Control& field)
{
    const Explanation explanation = form.explain(field);
    static constexpr TextView marks[] = { L"", L"+", L"~", L"!" };
    Text text = explanation.beside.empty() ? Text() : Text(marks[static_cast<int>(explanation.tone)]);
    text += explanation.beside;
    return explanation.below.empty() ? text : text + L"/" + explanation.below;
}

// "Caption=value; ...", with "*" behind changed values; each surprise follows after " # ".
inline Text saidToBeSaved(Form& form)
{
    const SaveSummary summary = form.summary();
    Text text;
    for (const SaveSummary::Part& part : summary.parts) {
        text += (text.empty() ? L"" : L"; ") + part.caption + (part.caption.empty() ? L"" : L"=") + part.value;
        text += part.isChanged ? L"*" : L"";
    }
    for (const Text& surprise : summary.surprises)
        text += L" # " + surprise;
    return text;
}

// A form whose search for the field of a refusal can be called.
template<typename Editor>
struct Asked : Editor {
    using Editor::Editor;
    using EditorForm::fieldOf;
};

}
