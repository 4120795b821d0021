#pragma once

#include "platform/controls/Control.h"

#include <vector>

namespace health {

// A drop-down list. Each entry has a text and a whole number of the program's own (its item data).
class ComboBox : public Control {
public:
    enum class Order {
        AsAdded,
        Sorted, // by text, the case of letters left aside
    };

    explicit ComboBox(Order order = Order::AsAdded)
        : m_order(order)
    {
    }

    // Takes all entries out; no entry is selected then.
    void clear();
    // Adds an entry and gives its index. The selected entry stays selected.
    int addItem(TextView text, int itemData = 0);

    int count() const { return static_cast<int>(m_items.size()); }
    const Text& itemText(int index) const { return m_items.at(static_cast<std::size_t>(index)).text; }
    // 0 for an index of -1.
    int itemData(int index) const;

    // Index of the selected entry, -1 when there is none.
    int listIndex() const { return m_listIndex; }
    // Selects an entry (-1: none) and raises Click. An index without an entry is a std::out_of_range.
    void setListIndex(int index);
    // Selects the first entry with this item data; false, and no change, when there is none.
    bool selectItemData(int itemData);

    // The selected entry's text; empty when there is none.
    Text text() const;

    // The user chooses an entry from the list, or takes the choice back with -1, where the program allows that.
    void choose(int index);
    bool isEmptiable() const { return m_emptiable; }
    void setEmptiable(bool emptiable) { m_emptiable = emptiable; }
    // The user presses a key in the list; 0 afterwards: swallowed.
    void pressKey(wchar_t& key) { raise(KeyPress, key); }

    std::function<void()> Click;
    std::function<void(wchar_t& key)> KeyPress;

private:
    struct Item {
        Text text;
        int data;
    };

    Order m_order;
    std::vector<Item> m_items;
    int m_listIndex = -1;
    bool m_emptiable = false;
};

// Selects the first entry with this text, ignoring the case of letters, and returns its index. If there is no such
// entry, it clears the selection and returns -1.
int SelectComboItem(ComboBox& comboBox, TextView text);

}
