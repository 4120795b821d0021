#pragma once

#include "platform/Desktop.h"

namespace health {

// Message boxes. An empty title becomes the kind's own, such as "Error".
class Messages {
public:
    // The desktop must outlive the object.
    explicit Messages(Desktop& desktop)
        : m_desktop(desktop)
    {
    }

    // Fills an empty title in the caller's variable too; an empty text shows no box.
    void ShowMessage(TextView text, Text& title, int kind);
    void ErrorBox(TextView text, TextView title);
    void InfoBox(TextView text, TextView title);
    void WarningBox(TextView text, TextView title);
    // True for Yes; No is the default button. Fills an empty title in the caller's variable too; shows an empty text.
    bool ConfirmBox(TextView text, Text& title);

private:
    Desktop& m_desktop;
};

}
