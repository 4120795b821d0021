// The logic's interface to the user's desktop: boxes, pointer, modal forms, clock.
#pragma once

#include "api/Text.h"
#include "platform/controls/Control.h"
#include "text/Dates.h"

namespace health {

class Form;
class Menu;

// Styles of a message box; a style is the sum of an icon, a button set and a default button.
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

// Mouse pointers and their numbers.
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
    // Processes pending window messages (painting, resizing), but no user input.
    virtual void processPendingEvents() = 0;
    // Sends a window message to an edit box. `value` is valid during the call only.
    virtual void sendEditMessage(EditHandle edit, int message, long first, const int* value) = 0;
    // The local date and time of the user's machine.
    virtual Moment now() const = 0;

    // Creates the windows of a form without showing them, and destroys them. The caller keeps the form.
    virtual void load(Form& form) = 0;
    virtual void unload(Form& form) = 0;
    // Shows a form until it is closed: raises Form_Load, then Form_Activate whenever the form becomes active. The
    // caller creates the form for one display only.
    virtual void showModal(Form& form) = 0;
    // Opens a context menu at the mouse pointer, or beside the focused control if the user pressed the menu key.
    virtual void popUp(Menu& menu) = 0;
};

}
