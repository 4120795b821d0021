#include "platform/controls/ComboBox.h"

#include "text/Letters.h"

#include <algorithm>
#include <stdexcept>

namespace health {

namespace {

bool sortsBefore(TextView a, TextView b)
{
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) { return lowerLetter(x) < lowerLetter(y); });
}

}

void ComboBox::clear()
{
    m_items.clear();
    m_listIndex = -1;
    notify(Change::Items);
}

int ComboBox::addItem(TextView text, int itemData)
{
    auto at = m_items.end();
    if (m_order == Order::Sorted)
        at = std::find_if(
            m_items.begin(), m_items.end(), [&](const Item& item) { return sortsBefore(text, item.text); });
    const int index = static_cast<int>(at - m_items.begin());
    m_items.insert(at, { Text(text), itemData });
    if (m_listIndex >= index)
        ++m_listIndex;
    notify(Change::Items);
    return index;
}

int ComboBox::itemData(int index) const { return index == -1 ? 0 : m_items.at(static_cast<std::size_t>(index)).data; }

void ComboBox::setListIndex(int index)
{
    if (index < -1 || index >= count())
        throw std::out_of_range("No such entry in the list.");
    m_listIndex = index;
    notify(Change::Selection);
    raise(Click);
}

bool ComboBox::selectItemData(int itemData)
{
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [&](const Item& item) { return item.data == itemData; });
    if (found == m_items.end())
        return false;
    setListIndex(static_cast<int>(found - m_items.begin()));
    return true;
}

Text ComboBox::text() const { return m_listIndex == -1 ? Text() : itemText(m_listIndex); }

void ComboBox::choose(int index)
{
    if (!canBeUsed() || index < -1 || index >= count())
        return;
    if (index == -1 && !m_emptiable)
        return;
    noteEntry();
    setListIndex(index);
}

int SelectComboItem(ComboBox& comboBox, TextView text)
{
    comboBox.setListIndex(-1);
    for (int i = 0; i < comboBox.count(); ++i) {
        if (equalIgnoringCase(comboBox.itemText(i), text)) {
            comboBox.setListIndex(i);
            break;
        }
    }
    return comboBox.listIndex();
}

}
