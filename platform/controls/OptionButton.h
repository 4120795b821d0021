#pragma once

#include "platform/controls/Button.h"

namespace health {

// One of several buttons of which at most one is chosen. Its group (OptionArray) takes the choice from the others.
class OptionButton : public CaptionedControl {
public:
    bool isChosen() const { return m_chosen; }
    // Choosing by the program raises Click, as the user's click does; taking the choice back does not.
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
        if (canBeUsed())
            setChosen(true);
    }

    std::function<void()> Click;

private:
    bool m_chosen = false;
};

}
