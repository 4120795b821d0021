#pragma once

#include "platform/controls/OptionButton.h"

#include <array>

namespace health {

// A group of numbered option buttons, at most one of them chosen. Choosing a button first clears the others, then
// raises the group's Click with its number. The group occupies the Click of each button: handlers belong on the group,
// and a handler on a button would stop the group from working.
template<std::size_t Count>
class OptionArray {
public:
    static constexpr int None = -1;

    OptionArray()
    {
        for (std::size_t i = 0; i < Count; ++i)
            m_buttons[i].Click = [this, i] { choose(i); };
    }

    OptionButton& operator[](std::size_t index) { return m_buttons.at(index); }
    auto begin() { return m_buttons.begin(); }
    auto end() { return m_buttons.end(); }
    static constexpr std::size_t size() { return Count; }

    // Number of the chosen button, or None.
    int chosen() const
    {
        for (std::size_t i = 0; i < Count; ++i) {
            if (m_buttons[i].isChosen())
                return static_cast<int>(i);
        }
        return None;
    }

    std::function<void(int index)> Click;

private:
    void choose(std::size_t index)
    {
        for (std::size_t other = 0; other < Count; ++other) {
            if (other != index)
                m_buttons[other].setChosen(false);
        }
        raise(Click, static_cast<int>(index));
    }

    std::array<OptionButton, Count> m_buttons;
};

}
