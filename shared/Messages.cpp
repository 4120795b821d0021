// modShared: message boxes, dates whose faults are reported, keys of multi-line boxes.
#include "shared/modShared.h"

#include <array>

namespace health {

namespace {

TextView defaultTitle(int kind)
{
    switch (kind) {
    case BoxStyle::Critical:
        return L"Error";
    case BoxStyle::Information:
        return L"Information";
    case BoxStyle::Exclamation:
        return L"Warning";
    default:
        return {};
    }
}

struct EditKey {
    int keyCode;
    int message;
    int value;
};

constexpr std::array<EditKey, 6> EditKeys { {
    { 65, 177, -1 }, // A: select all
    { 67, 769, 0 }, // C: copy
    { 86, 770, 0 }, // V: paste
    { 88, 768, 0 }, // X: cut
    { 89, 1108, 0 }, // Y: redo
    { 90, 199, 0 }, // Z: undo
} };

constexpr int ControlShift = 2;

}

void modShared::ShowMessage(TextView text, Text& title, int kind)
{
    if (title.empty())
        title = defaultTitle(kind);
    if (!text.empty())
        m_desktop.messageBox(text, kind, title);
}

void modShared::ErrorBox(TextView text, TextView title)
{
    Text ownTitle(title);
    ShowMessage(text, ownTitle, BoxStyle::Critical);
}

void modShared::InfoBox(TextView text, TextView title)
{
    Text ownTitle(title);
    ShowMessage(text, ownTitle, BoxStyle::Information);
}

void modShared::WarningBox(TextView text, TextView title)
{
    Text ownTitle(title);
    ShowMessage(text, ownTitle, BoxStyle::Exclamation);
}

bool modShared::ConfirmBox(TextView text, Text& title)
{
    if (title.empty())
        title = L"Confirm";
    constexpr int style = BoxStyle::YesNo + BoxStyle::Question + BoxStyle::SecondButtonDefault;
    return m_desktop.messageBox(text, style, title) == BoxAnswer::Yes;
}

bool modShared::ConfirmBox(TextView text, TextView title)
{
    Text ownTitle(title);
    return ConfirmBox(text, ownTitle);
}

Text modShared::DateToFMDate(TextView text, TimePart timePart)
{
    Text result;
    trap(L"modShared", L"DateToFMDate", [&] {
        if (text.empty())
            return;
        const auto moment = parseDate(text);
        if (!moment)
            throw Failure(L"\"" + Text(text) + L"\" is not a date.");
        result = fmDateOf(*moment, timePart);
    });
    return result;
}

void modShared::FilterEditKeys(int& keyCode, int shift, EditHandle edit)
{
    if (shift != ControlShift)
        return;
    for (const EditKey& key : EditKeys) {
        if (key.keyCode != keyCode)
            continue;
        // The address of the cell is passed, not its value; for select-all it still reaches past the text's end.
        m_desktop.sendEditMessage(edit, key.message, 0, &key.value);
        keyCode = 0;
        return;
    }
}

}
