#pragma once

#include "platform/controls/Button.h"

namespace health {

class CheckBox final : public CaptionedControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    bool isChecked() const { return m_checked; }
    // Raises Click when the state changes, like a click by the user.
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
        if (!canBeUsed())
            return;
        noteEntry();
        setChecked(!m_checked);
    }

    std::function<void()> Click;

private:
    bool m_checked = false;
};

}
