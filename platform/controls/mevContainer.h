#pragma once

#include "platform/controls/Button.h"

#include <initializer_list>
#include <vector>

namespace health {

// A frame that holds other controls and passes its enabled state to them. Frames inside it keep their own state; what
// they hold can be used only while both are enabled.
class mevContainer : public CaptionedControl {
public:
    void hold(std::initializer_list<Control*> controls);

    void setEnabled(bool enabled) override;

private:
    std::vector<Control*> m_held;
};

}
