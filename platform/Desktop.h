// The user's desktop, as the logic sees it: boxes, pointer, modal forms, clock.
#pragma once

#include "api/Text.h"
#include "platform/controls/Control.h"
#include "text/Dates.h"

namespace health {

class Form;
class Menu;

// Styles of a message box; icon and button set are added up.
namespace BoxStyle {
inline constexpr int YesNo = 4;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;
inline constexpr int SecondButtonDefault = 256;
}

enum class BoxAnswer {
    Ok,
    Yes,
    No,
    Closed,
};

// Pointer kinds by their numbers.
enum class Pointer {
    Default = 0,
    Hourglass = 11,
};

// Implemented by the front end. All operations run on the user-interface thread.
class Desktop {
public:
    virtual ~Desktop() = default;

    // Shows a modal box and returns the user's answer.
    virtual BoxAnswer messageBox(TextView text, int style, TextView title) = 0;
    virtual void setPointer(Pointer pointer) = 0;
    // Lets pending window messages (painting, resizing) be worked on; no user input.
    virtual void processPendingEvents() = 0;
    // Sends an edit box one of its window messages. `value` is alive during the call only.
    virtual void sendEditMessage(EditHandle edit, int message, long first, const int* value) = 0;
    // The civil date and time of the user's machine.
    virtual Moment now() const = 0;

    // Makes the windows of a form without showing it, and drops them. The form stays the caller's.
    virtual void load(Form& form) = 0;
    virtual void unload(Form& form) = 0;
    // Shows a form until it is closed: raises Form_Load, then Form_Activate whenever the form becomes active. The
    // caller makes the form for this one display and drops it afterwards.
    virtual void showModal(Form& form) = 0;
    // Pops a menu up at the pointer, or at the control with the focus when a key asked for it.
    virtual void popUp(Menu& menu) = 0;
};

}
