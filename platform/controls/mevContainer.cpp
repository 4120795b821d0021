#include "platform/controls/mevContainer.h"

namespace health {

void mevContainer::hold(std::initializer_list<Control*> controls)
{
    for (Control* control : controls) {
        control->setFrame(this);
        m_held.push_back(control);
    }
}

void mevContainer::setEnabled(bool enabled)
{
    CaptionedControl::setEnabled(enabled);
    for (Control* control : m_held)
        control->followFrame(enabled);
    // Nested controls became usable or unusable although their own state did not change.
    notify(Change::Enabled);
}

}
