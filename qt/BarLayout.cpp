#include "qt/BarLayout.h"

#include "qt/PillButton.h"
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

// Buttons without frames have room of their own around their texts.
int gapBetween(QLayoutItem& left, QLayoutItem& right, const Measures& measures)
{
    const bool buttons = dynamic_cast<PillButton*>(left.widget()) && dynamic_cast<PillButton*>(right.widget());
    return buttons ? measures.u() : measures.explanationGap();
}

}

BarLayout::BarLayout(QWidget* parent)
    : QLayout(parent)
{
}

BarLayout::~BarLayout() = default;

void BarLayout::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
    invalidate();
}

void BarLayout::insertWidget(int index, QWidget* widget)
{
    addChildWidget(widget);
    m_items.insert(m_items.begin() + index, std::make_unique<QWidgetItem>(widget));
    invalidate();
}

QLayoutItem* BarLayout::itemAt(int index) const
{
    return index < 0 || index >= count() ? nullptr : m_items[static_cast<std::size_t>(index)].get();
}

QLayoutItem* BarLayout::takeAt(int index)
{
    if (!itemAt(index))
        return nullptr;
    QLayoutItem* const item = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    invalidate();
    return item;
}

QSize BarLayout::minimumSize() const
{
    QSize size;
    for (const auto& item : m_items) {
        if (!item->isEmpty())
            size = size.expandedTo(item->minimumSize());
    }
    return size.grownBy(contentsMargins());
}

int BarLayout::heightForWidth(int width) const
{
    return arrange(width, [](QLayoutItem&, const QRect&) {});
}

void BarLayout::setGeometry(const QRect& place)
{
    QLayout::setGeometry(place);
    arrange(place.width(),
        [&](QLayoutItem& item, const QRect& within) { item.setGeometry(within.translated(place.topLeft())); });
}

// Calls `work` with each item and its place, in the middle of its line; returns the height of all lines.
template<typename Work>
int BarLayout::arrange(int width, Work work) const
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
        if (!line.empty())
            left += gapBetween(line.back().item, *item, measures);
        if (!line.empty() && left + size.width() > room) {
            endLine();
            top += measures.rowGap();
        }
        line.push_back({ *item, QRect(QPoint(margins.left() + left, top), size) });
        left += size.width();
        lineHeight = std::max(lineHeight, size.height());
    }
    endLine();
    return top + margins.bottom();
}

}
