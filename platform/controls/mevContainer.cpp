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
    for (Control* control : m_held) {
        if (dynamic_cast<mevContainer*>(control))
            continue;
        control->setEnabled(enabled);
        if (enabled && control->foreColour() == GreyText)
            control->setForeColour(DefaultColour);
    }
    // What can be used further inside has changed without a change of its own state.
    notify(Change::Enabled);
}

}
