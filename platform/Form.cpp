#include "platform/Form.h"

namespace health {

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
    if (m_observer)
        m_observer->focusMoved(*this);
}

void Form::setFocus(Control& control)
{
    if (control.canBeUsed())
        moveFocus(control);
}

bool Form::moveFocus(Control& control)
{
    if (m_active == &control)
        return true;
    Control* const left = m_notYetLeft ? m_notYetLeft : m_active;
    if (left && left != &control) {
        bool cancel = false;
        if (&control != m_cancel)
            raise(left->Validate, cancel);
        if (cancel) {
            m_notYetLeft = nullptr;
            enter(*left);
            return false;
        }
    }
    m_notYetLeft = nullptr;
    enter(control);
    // Leaving runs when the new control is known; it may move the focus on, or open a lookup.
    if (left && left != &control)
        raise(left->LostFocus);
    if (m_active == &control)
        raise(control.GotFocus);
    return true;
}

void Form::press(Button& button)
{
    if (!m_open || !button.canBeUsed())
        return;
    m_pressWithheld = false;
    if (isLookupOf(m_active, button)) {
        m_notYetLeft = m_active;
        enter(button);
        raise(button.GotFocus);
    } else if (!moveFocus(button) || m_pressWithheld) {
        return;
    }
    button.click();
}

}
