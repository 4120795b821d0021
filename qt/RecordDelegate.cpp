#include "qt/RecordDelegate.h"

#include "control/GridColumns.h"
#include "qt/GridModel.h"
#include "qt/RecordRows.h"
#include "qt/ShownRecords.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QPainter>
#include <QTableView>

#include <algorithm>

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

// A label that does not fit in semibold stays regular, and one that does not fit then breaks between words.
RecordDelegate::SetLabel RecordDelegate::setLabel(int row, int width) const
{
    const ListedRecord* const record = m_rows.record(row);
    const TextView label = record ? record->label : TextView();
    const int room = width - RowMeasures(m_list).labelEnd;
    const auto fits = [&](RowStyle style, TextView letters) {
        return QFontMetrics(m_rows.font(style)).horizontalAdvance(inOneLine(letters)) <= room;
    };
    const bool isStrong = m_rows.beginsKind(row) && fits(RowStyle::Strong, label);
    SetLabel set { label, isStrong ? RowStyle::Strong : RowStyle::Plain, { 0 } };
    for (std::size_t blank = label.find(L' '); blank != TextView::npos; blank = label.find(L' ', blank + 1)) {
        const std::size_t start = set.starts.back();
        const std::size_t end = std::min(label.find(L' ', blank + 1), label.size());
        if (!fits(set.style, label.substr(start, end - start)))
            set.starts.push_back(blank + 1);
    }
    return set;
}

int RecordDelegate::linesOfLabel(int row, int width) const
{
    return static_cast<int>(setLabel(row, width).starts.size());
}

void RecordDelegate::paintLabel(QPainter& painter, const QRect& place, int row) const
{
    const RowMeasures measures(m_list);
    const SetLabel set = setLabel(row, place.width());
    const QFont& font = m_rows.font(set.style);
    const bool isFirst = m_rows.beginsKind(row);
    const QColor colour = health::colourOf(isFirst && !m_rows.isAway ? Ink::Words : Ink::Quiet, m_list.palette());
    const std::vector<TextRange> found = m_rows.found(row, FoundIn::Label);
    for (std::size_t line = 0; line < set.starts.size(); ++line) {
        const std::size_t start = set.starts[line];
        const std::size_t end = line + 1 < set.starts.size() ? set.starts[line + 1] - 1 : set.letters.size();
        const TextView letters = set.letters.substr(start, end - start);
        const int width = QFontMetrics(font).horizontalAdvance(inOneLine(letters));
        const QPoint topLeft(place.left() + place.width() - measures.labelEnd - width,
            place.top() + measures.above + static_cast<int>(line) * measures.line);
        drawText(painter, topLeft, { letters, start, font, colour, found });
    }
}

void RecordDelegate::paintSummary(QPainter& painter, const QRect& place, int row) const
{
    const RowMeasures measures(m_list);
    const TextView summary = m_rows.summary(row);
    const std::vector<TextRange> found = m_rows.found(row, FoundIn::Summary);
    const QPoint start(place.left() + measures.left, place.top() + measures.above);
    for (const RowPiece& piece : m_rows.text(row).pieces) {
        const QPoint topLeft = start + QPoint(piece.left, piece.line * measures.line);
        drawText(painter, topLeft,
            { summary.substr(piece.start, piece.length), piece.start, m_rows.font(piece.style),
                colourOf(piece.style, row), found });
    }
}

// Found letters have a ground and an underline.
void RecordDelegate::drawText(QPainter& painter, QPoint topLeft, const LineText& text) const
{
    const int line = RowMeasures(m_list).line;
    const QFontMetrics metrics(text.font);
    painter.setFont(text.font);
    int left = topLeft.x();
    const auto draw = [&](std::size_t from, std::size_t to, bool isFound) {
        const QString letters = inOneLine(text.letters.substr(from, to - from));
        const int width = metrics.horizontalAdvance(letters);
        if (isFound) {
            const int underline = Measures(m_list).focusFrame();
            const QRect ground(left, topLeft.y(), width, line);
            painter.fillRect(ground, health::colourOf(Ink::CautionTint, m_list.palette()));
            painter.fillRect(
                ground.adjusted(0, line - underline, 0, 0), health::colourOf(Ink::Caution, m_list.palette()));
        }
        painter.setPen(isFound ? health::colourOf(Ink::Words, m_list.palette()) : text.colour);
        painter.drawText(left, topLeft.y() + baselineIn(line, metrics), letters);
        left += width;
    };
    std::size_t drawn = 0;
    for (const TextRange& range : text.found) {
        const auto inside = [&](std::size_t place) {
            return std::clamp(place, text.start, text.start + text.letters.size()) - text.start;
        };
        const std::size_t from = inside(range.start);
        const std::size_t to = inside(range.end());
        if (from == to)
            continue;
        draw(drawn, from, false);
        draw(from, to, true);
        drawn = to;
    }
    draw(drawn, text.letters.size(), false);
}

QSize RecordDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const
{
    const RowMeasures measures(m_list);
    return { 0, m_rows.text(index.row()).lines * measures.line + measures.aboveAndBelow };
}

}
