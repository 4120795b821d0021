#include "qt/FlowLayout.h"

#include "toolkit/Measures.h"

#include <QWidget>

#include <algorithm>
#include <utility>

namespace health {

namespace {

QSize sizeOf(const QLayoutItem& item, int room)
{
    const QSize size = item.sizeHint();
    if (size.width() <= room)
        return size;
    return { room, item.hasHeightForWidth() ? item.heightForWidth(room) : size.height() };
}

}

FlowLayout::FlowLayout(QWidget* parent)
    : QLayout(parent)
{
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
    invalidate();
}

void FlowLayout::insertWidget(int index, QWidget* widget)
{
    addChildWidget(widget);
    m_items.insert(m_items.begin() + index, std::make_unique<QWidgetItem>(widget));
    invalidate();
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index < 0 || index >= count() ? nullptr : m_items[static_cast<std::size_t>(index)].get();
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (!itemAt(index))
        return nullptr;
    QLayoutItem* const item = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    invalidate();
    return item;
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const auto& item : m_items) {
        if (!item->isEmpty())
            size = size.expandedTo(item->minimumSize());
    }
    return size.grownBy(contentsMargins());
}

int FlowLayout::heightForWidth(int width) const
{
    return arrange(width, [](QLayoutItem&, const QRect&) {});
}

void FlowLayout::setGeometry(const QRect& place)
{
    QLayout::setGeometry(place);
    arrange(place.width(),
        [&](QLayoutItem& item, const QRect& within) { item.setGeometry(within.translated(place.topLeft())); });
}

// Calls `work` with each item and its place, in the middle of its line; returns the height of all lines.
template<typename Work>
int FlowLayout::arrange(int width, Work work) const
{
    struct Placed {
        QLayoutItem& item;
        QRect place;
    };
    const Measures measures(*parentWidget());
    const QMargins margins = contentsMargins();
    const int room = std::max(1, width - margins.left() - margins.right());
    int left = 0;
    int top = margins.top();
    int lineHeight = 0;
    std::vector<Placed> line;
    const auto endLine = [&] {
        for (const auto& [item, place] : line)
            work(item, place.translated(0, (lineHeight - place.height()) / 2));
        line.clear();
        left = 0;
        top += std::exchange(lineHeight, 0);
    };
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = sizeOf(*item, room);
        if (left > 0 && left + size.width() > room) {
            endLine();
            top += measures.rowGap();
        }
        line.push_back({ *item, QRect(QPoint(margins.left() + left, top), size) });
        left += size.width() + measures.u();
        lineHeight = std::max(lineHeight, size.height());
    }
    endLine();
    return top + margins.bottom();
}

}
