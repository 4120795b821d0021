#pragma once

#include "platform/controls/Button.h"

#include <initializer_list>
#include <vector>

namespace health {

// A frame that holds other controls and passes its enabled state to them. Nested frames keep their own state; their
// controls can be used only while both frames are enabled.
class mevContainer final : public CaptionedControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    void hold(std::initializer_list<Control*> controls);

    void setEnabled(bool enabled) override;
    void followFrame(bool) override { } // keeps its own state

private:
    std::vector<Control*> m_held;
};

}
