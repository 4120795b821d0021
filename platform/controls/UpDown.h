#pragma once

#include "platform/controls/Control.h"

namespace health {

// A pair of arrows that raises and lowers a whole number between two bounds.
class UpDown final : public Control {
public:
    UpDown(int minimum, int maximum)
        : m_minimum(minimum)
        , m_maximum(maximum)
        , m_value(minimum)
    {
    }

    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    int minimum() const { return m_minimum; }
    int maximum() const { return m_maximum; }
    int value() const { return m_value; }
    // Clamps the value to the bounds. Raises ValueChanged if the value changes.
    void setValue(int value);

    // The user presses an arrow: one up or one down.
    void step(int by)
    {
        if (canBeUsed())
            setValue(m_value + by);
    }

    std::function<void()> ValueChanged;

private:
    int m_minimum;
    int m_maximum;
    int m_value;
};

inline void UpDown::setValue(int value)
{
    value = value < m_minimum ? m_minimum : value > m_maximum ? m_maximum : value;
    if (m_value == value)
        return;
    m_value = value;
    notify(Change::Value);
    raise(ValueChanged);
}

}
