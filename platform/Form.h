#pragma once

#include "platform/Arrangement.h"
#include "platform/controls/Button.h"

#include <functional>
#include <map>

namespace health {

class Form;

// Implemented by the front end for an open form.
class FormObserver {
public:
    virtual void captionChanged(Form& form) = 0;
    // The active control has the focus from now on, also where it had it before: it was entered, or a refusal keeps the
    // user in it.
    virtual void focusMoved(Form& form) = 0;
    // Leaving and entering are over; boxes and dialogs that came with them are closed.
    virtual void focusSettled(Form& form) = 0;
    virtual void defaultChanged(Form& form) = 0;
    virtual void closed(Form& form) = 0;

protected:
    ~FormObserver() = default;
};

// A window of the program: its controls are members of the class that derives from it. The form knows which control has
// the focus and runs the events of leaving and entering; a front end tells it what the user does.
class Form {
public:
    explicit Form(TextView name, TextView caption = {})
        : m_name(name)
        , m_caption(caption)
    {
    }
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    // The form's own name, as error reports give it.
    const Text& name() const { return m_name; }
    const Text& caption() const { return m_caption; }
    void setCaption(TextView caption);
    // Design height in twips; 0: as high as its parts need.
    int height = 0;

    // What the form looks like; null for a form that is never shown.
    virtual Arrangement arrangement() { return {}; }

    // Before the form is shown (by way of load()); when it has been shown, and each time the user comes back to it from
    // another form. A message box or another program in between raises nothing.
    virtual void Form_Load() { }
    virtual void Form_Activate() { }

    // Raises Form_Load, once in the form's life.
    void load();

    void setObserver(FormObserver* observer) { m_observer = observer; }

    bool isOpen() const { return m_open; }
    // By the front end, when it shows the form.
    void open() { m_open = true; }
    // Ends the modal display.
    void close();

    Control* activeControl() const { return m_active; }
    // By the program: moves the focus, with the events of leaving and entering. A control that cannot be used does not
    // get it.
    void setFocus(Control& control);
    // By the user: the same, unless Validate keeps the focus; false then. On the way to Cancel nothing is judged; what
    // was left is judged when the user goes on from there to anything else.
    bool moveFocus(Control& control) { return move(control, Purpose::Focus); }
    // Leaving and entering are under way: a box or a dialog may be open.
    bool isMoving() const { return m_moves > 0; }

    // The button that Enter presses, and the one that Escape presses; null for none.
    Button* defaultButton() const { return m_default; }
    void setDefaultButton(Button* button);
    Button* cancelButton() const { return m_cancel; }

    // The button opens the lookup of the field.
    bool isLookupOf(const Control* field, const Control& button) const;

    bool hasLookup(const Control* field) const { return m_lookupButtons.contains(field); }

    // The user presses a button by any means: the field with the focus is left first, but for Cancel. A field that
    // is left can stop the press (see withholdPress).
    void press(Button& button);

protected:
    void setCancelButton(Button& button) { m_cancel = &button; }
    // The button beside a field that opens its lookup. Pressing it out of the field does not leave the field yet, or
    // the lookup would come twice.
    void setLookupButton(Control& field, Button& button) { m_lookupButtons[&field] = &button; }
    // From a LostFocus: what became of the field wants to be seen before the button that is being pressed works.
    void withholdPress() { m_pressWithheld = true; }

private:
    enum class Purpose {
        Focus,
        Press, // a date that is refused stops it, too
    };
    bool move(Control& control, Purpose purpose);
    bool moveBetween(Control& control, Purpose purpose);
    bool isLeft(Control& field, const Control& next, Purpose purpose);
    void enter(Control& control);

    Text m_name;
    Text m_caption;
    FormObserver* m_observer = nullptr;
    Control* m_active = nullptr;
    Control* m_notYetLeft = nullptr; // the field, while its lookup button or Cancel has the focus
    int m_moves = 0; // nested: leaving a field may open a lookup that moves the focus on
    Button* m_default = nullptr;
    Button* m_cancel = nullptr;
    std::map<const Control*, const Control*> m_lookupButtons;
    bool m_pressWithheld = false;
    bool m_open = false;
    bool m_loaded = false;
};

}
