#include "qt/RecordDelegate.h"

#include "control/GridColumns.h"
#include "qt/GridModel.h"
#include "qt/Inks.h"
#include "qt/Measures.h"
#include "qt/RecordRows.h"

#include <QPainter>
#include <QTableView>

namespace health {

namespace {

constexpr double AroundText = 0.24; // em, above and below
constexpr double NarrowText = 33; // em

// The baseline of a line's text.
int baselineIn(int line, const QFontMetrics& metrics) { return (line - metrics.height()) / 2 + metrics.ascent(); }

}

RowMeasures::RowMeasures(const QWidget& list)
{
    const Measures measures(list);
    line = measures.em();
    above = measures.ems(AroundText);
    aboveAndBelow = measures.ems(2 * AroundText);
    labelEnd = measures.units(2);
    left = measures.units(1.5);
    right = measures.units(2);
    narrow = measures.ems(NarrowText);
}

RecordDelegate::RecordDelegate(RecordRows& rows, QTableView& list)
    : QStyledItemDelegate(&list)
    , m_rows(rows)
    , m_list(list)
{
}

bool RecordDelegate::isSelected(int row) const
{
    const QModelIndex current = m_list.currentIndex();
    return current.row() == row && m_list.selectionModel()->isSelected(current);
}

void RecordDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int row = index.row();
    const QRect& place = option.rect;
    const QPalette& palette = m_list.palette();
    painter->save();
    if (isSelected(row))
        painter->fillRect(place, health::colourOf(Ink::SelectionTint, palette));
    else if (row > 0 && m_rows.beginsKind(row) && !isSelected(row - 1))
        painter->fillRect(place.left(), place.top(), place.width(), Measures(m_list).hairline(),
            health::colourOf(Ink::Hairline, palette));
    const auto& model = static_cast<const GridModel&>(*index.model());
    if (model.gridColumn(index.column()) == GridColumn::Label)
        paintLabel(*painter, place, row);
    else
        paintSummary(*painter, place, row);
    painter->restore();
}

QColor RecordDelegate::colourOf(RowStyle style, int row) const
{
    const ListedRecord* const record = m_rows.record(row);
    const bool isQuiet = style == RowStyle::Quiet || m_rows.isAway;
    if (record && record->isOfCurrentVisit)
        return health::colourOf(isQuiet ? Ink::VisitCaption : Ink::Visit, m_list.palette());
    return health::colourOf(isQuiet ? Ink::Quiet : Ink::Words, m_list.palette());
}

// A label that does not fit in semibold stays regular.
void RecordDelegate::paintLabel(QPainter& painter, const QRect& place, int row) const
{
    const RowMeasures measures(m_list);
    const ListedRecord* const record = m_rows.record(row);
    const QString text = inOneLine(record ? record->label : TextView());
    const bool isFirst = m_rows.beginsKind(row);
    const int room = place.width() - measures.labelEnd;
    const auto width = [&](RowStyle style) { return QFontMetrics(m_rows.font(style)).horizontalAdvance(text); };
    const bool isStrong = isFirst && width(RowStyle::Strong) <= room;
    const QFont& font = m_rows.font(isStrong ? RowStyle::Strong : RowStyle::Plain);
    painter.setFont(font);
    painter.setPen(health::colourOf(isFirst && !m_rows.isAway ? Ink::Words : Ink::Quiet, m_list.palette()));
    const QFontMetrics metrics(font);
    const int left = place.left() + room - metrics.horizontalAdvance(text);
    painter.drawText(left, place.top() + measures.above + baselineIn(measures.line, metrics), text);
}

void RecordDelegate::paintSummary(QPainter& painter, const QRect& place, int row) const
{
    const RowMeasures measures(m_list);
    const TextView summary = m_rows.summary(row);
    const QPoint start(place.left() + measures.left, place.top() + measures.above);
    for (const RowPiece& piece : m_rows.text(row).pieces) {
        const QFont& font = m_rows.font(piece.style);
        painter.setFont(font);
        painter.setPen(colourOf(piece.style, row));
        const int baseline = piece.line * measures.line + baselineIn(measures.line, QFontMetrics(font));
        painter.drawText(start + QPoint(piece.left, baseline), inOneLine(summary.substr(piece.start, piece.length)));
    }
}

QSize RecordDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const
{
    const RowMeasures measures(m_list);
    return { 0, m_rows.text(index.row()).lines * measures.line + measures.aboveAndBelow };
}

}
