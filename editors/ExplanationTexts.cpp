#include "editors/ExplanationTexts.h"

#include "text/Conversions.h"
#include "text/Letters.h"

#include <charconv>

namespace health {

Text quoted(TextView text) { return L"\"" + Text(text) + L"\""; }

Text numberText(double value)
{
    std::array<char, 400> letters; // the longest double has 309 digits before the point
    const auto end = std::to_chars(letters.begin(), letters.end(), value, std::chars_format::fixed).ptr;
    return Text(letters.begin(), end);
}

Text groupedText(long long value)
{
    Text text = wholeText(value);
    for (std::size_t at = text.size(); at > 3; at -= 3)
        text.insert(at - 3, L",");
    return text;
}

Explanation besideField(TextView text, Tone tone)
{
    Explanation explanation;
    explanation.beside = text;
    explanation.tone = tone;
    return explanation;
}

Explanation belowField(TextView text)
{
    Explanation explanation;
    explanation.below = text;
    return explanation;
}

Text wasText(TextView stored, TextView now)
{
    return stored.empty() || equalIgnoringCase(stored, now) ? Text() : L"was " + Text(stored);
}

Explanation lengthOf(TextView text, std::size_t longest)
{
    const Text length = groupedText(static_cast<long long>(text.size()));
    const Text limit = groupedText(static_cast<long long>(longest)) + L" characters";
    if (text.size() > longest)
        return besideField(length + L" of at most " + limit, Tone::Error);
    if (text.size() * 10 > longest * 9)
        return besideField(length + L" of " + limit, Tone::Caution);
    return belowField(length + L" of " + limit);
}

Explanation lengthIfClose(TextView text, std::size_t longest)
{
    Explanation length = lengthOf(text, longest);
    length.below.clear();
    return length;
}

Control* fieldNamedIn(TextView sentence, std::initializer_list<FieldWords> table)
{
    for (const auto& [words, field] : table) {
        if (sentence.find(words) != TextView::npos)
            return field;
    }
    return nullptr;
}

}
