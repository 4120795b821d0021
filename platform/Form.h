#pragma once

#include "platform/Arrangement.h"
#include "platform/Explanation.h"
#include "platform/controls/Button.h"

#include <functional>
#include <map>

namespace health {

class Form;

// Implemented by the front end for an open form.
class FormObserver {
public:
    virtual void captionChanged(Form& form) = 0;
    // The active control gets the focus, or keeps it because the user may not leave it.
    virtual void focusMoved(Form& form) = 0;
    // The move is complete: all its events have run, and boxes and dialogs that they opened are closed.
    virtual void focusSettled(Form& form) = 0;
    virtual void defaultChanged(Form& form) = 0;
    // What the form says about itself or its fields may have changed: heading, explanations, summary, notice.
    virtual void textsChanged(Form& form) = 0;
    virtual void closed(Form& form) = 0;

protected:
    ~FormObserver() = default;
};

// A window of the program; its controls are members of the derived class. The form knows which control has the focus
// and raises the focus events; the front end reports what the user does.
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

    // The form's name in error reports.
    const Text& name() const { return m_name; }
    const Text& caption() const { return m_caption; }
    void setCaption(TextView caption);
    // Minimum height in twips; 0: as high as its controls require.
    int height() const { return m_height; }
    void setHeight(int twips) { m_height = twips; }

    // The form's layout; empty for a form that is never shown.
    virtual Arrangement arrangement() { return {}; }

    // Called by load() before the form is shown.
    virtual void Form_Load() { }
    // Called after the form is shown and whenever the user returns to it from another form, but not after a message
    // box or another program.
    virtual void Form_Activate() { }

    // What the form says about itself and a field, computed from its present entries. The front end asks again after
    // textsChanged and after each change of a control.
    virtual FormHeading heading() { return {}; }
    virtual Explanation explain(const Control&) { return {}; }
    virtual SaveSummary summary() { return {}; }
    virtual FormNotice notice() { return {}; }
    // The user presses the notice's button.
    virtual void followNotice() { }

    // Calls Form_Load, once in the form's life.
    void load();

    void setObserver(FormObserver* observer) { m_observer = observer; }

    bool isOpen() const { return m_open; }
    // Called by the front end when it shows the form.
    void open() { m_open = true; }
    // Ends the modal display.
    void close();

    Control* activeControl() const { return m_active; }
    // By the program: moves the focus and raises the focus events. Does nothing for a control that cannot be used.
    void setFocus(Control& control);
    // By the user: the same; false if Validate keeps the focus. A move to Cancel does not validate the field; a move
    // from there to any other control does.
    bool moveFocus(Control& control) { return move(control, Purpose::Focus); }
    // Focus events are running; they may have opened a box or a dialog.
    bool isMoving() const { return m_moves > 0; }

    // The buttons that Enter and Escape press; null for none.
    Button* defaultButton() const { return m_default; }
    void setDefaultButton(Button* button);
    Button* cancelButton() const { return m_cancel; }

    // True if the button opens the lookup of the field.
    bool isLookupOf(const Control* field, const Control& button) const;

    bool hasLookup(const Control* field) const { return m_lookupButtons.contains(field); }

    // The user presses a button with mouse or keyboard. The focused field is left first and may stop the press (see
    // withholdPress); Cancel skips validation. Ignored while the action of an earlier press runs, so that impatient
    // presses during a long call act once.
    void press(Button& button);

protected:
    void setCancelButton(Button& button) { m_cancel = &button; }
    // The button beside a field that opens its lookup. Pressing it from the field does not leave the field yet,
    // because leaving would open the lookup a second time.
    void setLookupButton(Control& field, Button& button) { m_lookupButtons[&field] = &button; }
    // Called from LostFocus: cancels the pending button press so that the user sees the changed field first.
    void withholdPress() { m_pressWithheld = true; }

    void noteTextsChanged()
    {
        if (m_observer)
            m_observer->textsChanged(*this);
    }

private:
    enum class Purpose {
        Focus,
        Press, // a refused date stops it too
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
    int m_moves = 0; // nested, because leaving a field may open a lookup that moves the focus
    Button* m_default = nullptr;
    Button* m_cancel = nullptr;
    std::map<const Control*, const Control*> m_lookupButtons;
    int m_height = 0;
    bool m_pressWithheld = false;
    bool m_pressing = false;
    bool m_open = false;
    bool m_loaded = false;
};

}
