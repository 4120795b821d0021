#pragma once

#include "platform/controls/Button.h"

namespace health {

class CheckBox : public CaptionedControl {
public:
    bool isChecked() const { return m_checked; }
    // Raises Click when the state changes, as the user's click does.
    void setChecked(bool checked)
    {
        if (m_checked == checked)
            return;
        m_checked = checked;
        notify(Change::Value);
        raise(Click);
    }

    // The user clicks the box.
    void click()
    {
        if (canBeUsed())
            setChecked(!m_checked);
    }

    std::function<void()> Click;

private:
    bool m_checked = false;
};

}
