#include "platform/Form.h"

#include "platform/FlagScope.h"

namespace health {

namespace {

// Counts a move during the object's life, even if a handler throws.
class MoveScope {
public:
    explicit MoveScope(int& moves)
        : m_moves(moves)
    {
        ++m_moves;
    }
    ~MoveScope() { --m_moves; }
    MoveScope(const MoveScope&) = delete;
    MoveScope& operator=(const MoveScope&) = delete;

private:
    int& m_moves;
};

}

void Form::setCaption(TextView caption)
{
    m_caption = caption;
    if (m_observer)
        m_observer->captionChanged(*this);
}

void Form::load()
{
    if (!m_loaded) {
        m_loaded = true;
        Form_Load();
    }
}

void Form::close()
{
    if (!m_open)
        return;
    m_open = false;
    if (m_observer)
        m_observer->closed(*this);
}

void Form::setDefaultButton(Button* button)
{
    m_default = button;
    if (m_observer)
        m_observer->defaultChanged(*this);
}

bool Form::isLookupOf(const Control* field, const Control& button) const
{
    const auto found = m_lookupButtons.find(field);
    return found != m_lookupButtons.end() && found->second == &button;
}

void Form::enter(Control& control)
{
    m_active = &control;
    control.entered();
    if (m_observer)
        m_observer->focusMoved(*this);
}

void Form::setFocus(Control& control)
{
    if (control.canBeUsed())
        moveFocus(control);
}

bool Form::move(Control& control, Purpose purpose)
{
    bool moved = false;
    if (m_active == &control) {
        if (m_observer)
            m_observer->focusMoved(*this);
        return true;
    }
    {
        const MoveScope moving(m_moves);
        moved = moveBetween(control, purpose);
    }
    if (m_moves == 0 && m_observer)
        m_observer->focusSettled(*this);
    return moved;
}

bool Form::moveBetween(Control& control, Purpose purpose)
{
    Control* const left = m_notYetLeft ? m_notYetLeft : m_active;
    const bool moved = !left || left == &control || isLeft(*left, control, purpose);
    m_notYetLeft = moved && &control == m_cancel ? left : nullptr;
    enter(moved ? control : *left);
    if (moved) {
        // LostFocus runs after the new control is active; it may move the focus again or open a lookup.
        if (left && left != &control)
            raise(left->LostFocus);
        if (m_active == &control)
            raise(control.GotFocus);
    }
    return moved;
}

// Settles and validates the field; false if that keeps the focus in it.
bool Form::isLeft(Control& field, const Control& next, Purpose purpose)
{
    if (&next == m_cancel || !field.canBeUsed())
        return true;
    const bool isSettled = field.settle();
    bool cancel = false;
    raise(field.Validate, cancel);
    return !cancel && (isSettled || purpose == Purpose::Focus);
}

void Form::press(Button& button)
{
    if (!m_open || m_pressing || !button.canBeUsed())
        return;
    const FlagScope pressing(m_pressing);
    m_pressWithheld = false;
    if (isLookupOf(m_active, button)) {
        m_notYetLeft = m_active;
        enter(button);
        raise(button.GotFocus);
    } else if (!move(button, Purpose::Press) || m_pressWithheld) {
        return;
    }
    button.click();
}

}
