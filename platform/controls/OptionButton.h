#pragma once

#include "platform/controls/Button.h"

namespace health {

// One of several buttons of which at most one is chosen. Its group (OptionArray) clears the others.
class OptionButton final : public CaptionedControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    bool isChosen() const { return m_chosen; }
    // Choosing raises Click, like a click by the user; clearing does not.
    void setChosen(bool chosen)
    {
        if (m_chosen == chosen)
            return;
        m_chosen = chosen;
        notify(Change::Value);
        if (chosen)
            raise(Click);
    }

    // The user clicks the button.
    void click()
    {
        if (!canBeUsed())
            return;
        noteEntry();
        setChosen(true);
    }

    std::function<void()> Click;

private:
    bool m_chosen = false;
};

}
