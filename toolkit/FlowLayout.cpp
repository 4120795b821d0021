#include "toolkit/FlowLayout.h"

#include <algorithm>

namespace health {

void FlowLayout::setGaps(QSize gaps)
{
    m_gaps = gaps;
    invalidate();
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

// The caller owns the item.
QLayoutItem* FlowLayout::takeAt(int index)
{
    if (!itemAt(index))
        return nullptr;
    QLayoutItem* const item = m_items[static_cast<std::size_t>(index)].release();
    m_items.erase(m_items.begin() + index);
    return item;
}

QSize FlowLayout::sizeHint() const
{
    QSize size;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const int gap = size.isEmpty() ? 0 : m_gaps.width();
        size = QSize(size.width() + gap + item->sizeHint().width(), size.height())
                   .expandedTo({ 0, item->sizeHint().height() });
    }
    return size.grownBy(contentsMargins());
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const auto& item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect& place)
{
    QLayout::setGeometry(place);
    arrange(place, Purpose::Place);
}

// Returns the height that the items need.
int FlowLayout::arrange(const QRect& place, Purpose purpose) const
{
    const QRect inside = place.marginsRemoved(contentsMargins());
    QPoint corner = inside.topLeft();
    int lineHeight = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const int width = std::min(item->sizeHint().width(), inside.width());
        const int height = item->hasHeightForWidth() ? item->heightForWidth(width) : item->sizeHint().height();
        if (corner.x() > inside.left() && corner.x() + width > inside.left() + inside.width()) {
            corner = { inside.left(), corner.y() + lineHeight + m_gaps.height() };
            lineHeight = 0;
        }
        if (purpose == Purpose::Place)
            item->setGeometry({ corner, QSize(width, height) });
        corner.rx() += width + m_gaps.width();
        lineHeight = std::max(lineHeight, height);
    }
    return corner.y() + lineHeight - inside.top() + contentsMargins().top() + contentsMargins().bottom();
}

}
