#include "platform/controls/CheckList.h"

namespace health {

int CheckList::addItem(TextView text, int itemData)
{
    m_items.push_back({ Text(text), itemData });
    notify(Change::Items);
    return count() - 1;
}

void CheckList::setChecked(int index, bool checked)
{
    Item& changed = m_items.at(static_cast<std::size_t>(index));
    if (changed.checked == checked)
        return;
    changed.checked = checked;
    notify(Change::Value);
    raise(ItemCheck, index);
}

void CheckList::uncheckOthers(int index)
{
    for (int other = 0; other < count(); ++other) {
        if (other != index)
            setChecked(other, false);
    }
}

int CheckList::firstChecked() const
{
    for (int index = 0; index < count(); ++index) {
        if (isChecked(index))
            return index;
    }
    return -1;
}

void CheckList::setListIndex(int index)
{
    if (index != -1)
        item(index);
    m_listIndex = index;
    notify(Change::Selection);
}

void CheckList::click(int index)
{
    if (!canBeUsed())
        return;
    noteEntry();
    setListIndex(index);
    setChecked(index, !isChecked(index));
}

}
