#include "shared/Messages.h"

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

}

void Messages::ShowMessage(TextView text, Text& title, int kind)
{
    if (title.empty())
        title = defaultTitle(kind);
    if (!text.empty())
        m_desktop.messageBox(text, kind, title);
}

void Messages::ErrorBox(TextView text, TextView title)
{
    Text ownTitle(title);
    ShowMessage(text, ownTitle, BoxStyle::Critical);
}

void Messages::InfoBox(TextView text, TextView title)
{
    Text ownTitle(title);
    ShowMessage(text, ownTitle, BoxStyle::Information);
}

void Messages::WarningBox(TextView text, TextView title)
{
    Text ownTitle(title);
    ShowMessage(text, ownTitle, BoxStyle::Exclamation);
}

bool Messages::ConfirmBox(TextView text, Text& title)
{
    constexpr int style = BoxStyle::YesNo + BoxStyle::Question + BoxStyle::SecondButtonDefault;
    if (title.empty())
        title = L"Confirm";
    return m_desktop.messageBox(text, style, title) == BoxAnswer::Yes;
}

}
