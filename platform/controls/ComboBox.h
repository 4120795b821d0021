#pragma once

#include "platform/controls/Control.h"

#include <vector>

namespace health {

// A drop-down list. Each entry has a text and a whole number that the program chooses (its item data).
class ComboBox final : public Control {
public:
    enum class Order {
        AsAdded,
        Sorted, // by text, ignoring case
    };

    explicit ComboBox(Order order = Order::AsAdded)
        : m_order(order)
    {
    }

    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    // Removes all entries and the selection.
    void clear();
    // Adds an entry and returns its index. The selected entry stays selected.
    int addItem(TextView text, int itemData = 0);

    int count() const { return static_cast<int>(m_items.size()); }
    const Text& itemText(int index) const { return m_items.at(static_cast<std::size_t>(index)).text; }
    // 0 for an index of -1.
    int itemData(int index) const;

    // Index of the selected entry, -1 if no entry is selected.
    int listIndex() const { return m_listIndex; }
    // Selects an entry, or clears the selection with -1, and raises Click. Throws std::out_of_range for an index
    // without an entry.
    void setListIndex(int index);
    // Selects the first entry with this item data; false, without a change, if no entry has it.
    bool selectItemData(int itemData);

    // The selected entry's text; empty if no entry is selected.
    Text text() const;

    // The user chooses an entry, or clears the choice with -1 if isEmptiable().
    void choose(int index);
    // The user may clear the choice.
    bool isEmptiable() const { return m_emptiable; }
    void setEmptiable(bool emptiable) { m_emptiable = emptiable; }
    // The user presses a key in the list; a handler that consumes the key sets it to 0.
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

// Selects the first entry with this text, ignoring case, and returns its index. If there is no such entry, clears the
// selection and returns -1.
int SelectComboItem(ComboBox& comboBox, TextView text);

}
