#pragma once

#include "platform/controls/Control.h"

#include <vector>

namespace health {

// A list with a check box on each row.
class CheckList final : public Control {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    int addItem(TextView text, int itemData);
    int count() const { return static_cast<int>(m_items.size()); }
    const Text& itemText(int index) const { return item(index).text; }
    int itemData(int index) const { return index == -1 ? 0 : item(index).data; }
    bool isChecked(int index) const { return item(index).checked; }
    // Raises ItemCheck when the state changes.
    void setChecked(int index, bool checked);

    // Unchecks all rows except this one.
    void uncheckOthers(int index);
    // The first checked row, -1 if no row is checked.
    int firstChecked() const;

    int listIndex() const { return m_listIndex; }
    void setListIndex(int index);

    // The user moves to a row.
    void choose(int index)
    {
        if (canBeUsed())
            setListIndex(index);
    }
    // The user clicks the box of a row, which also makes the row current.
    void click(int index);

    std::function<void(int index)> ItemCheck;

private:
    struct Item {
        Text text;
        int data;
        bool checked = false;
    };
    const Item& item(int index) const { return m_items.at(static_cast<std::size_t>(index)); }

    std::vector<Item> m_items;
    int m_listIndex = -1;
};

}
