#include "qt/RecordGutter.h"

#include "qt/RecordDelegate.h"
#include "qt/RecordRows.h"
#include "qt/RowPainting.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTableView>
#include <QToolTip>

namespace health {

using namespace Qt::StringLiterals;

namespace {

// In em.
constexpr double GutterWidth = 2.35;
constexpr double BarWidth = 0.22;
constexpr double NewsMiddle = 0.85;
constexpr double LockMiddle = 1.68;
constexpr double MarkSize = 0.46;

void drawDot(QPainter& painter, const QRectF& place, const QColor& colour)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(place);
}

void drawTriangle(QPainter& painter, const QRectF& place, const QColor& colour)
{
    painter.setPen(QPen(colour, place.width() / 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QRectF box = place.adjusted(-place.width() * 0.06, 0, place.width() * 0.06, 0);
    painter.drawPolygon(QPolygonF { { QPointF(box.center().x(), box.top()), box.bottomRight(), box.bottomLeft() } });
}

void drawCross(QPainter& painter, const QRectF& place, const QColor& colour)
{
    painter.setPen(QPen(colour, place.width() / 5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(place.topLeft(), place.bottomRight());
    painter.drawLine(place.topRight(), place.bottomLeft());
}

void drawPadlock(QPainter& painter, const QRectF& place, const QColor& colour)
{
    const double side = place.width();
    painter.setPen(QPen(colour, side / 6));
    painter.setBrush(Qt::NoBrush);
    QPainterPath shackle(QPointF(place.left() + side * 0.2, place.center().y()));
    shackle.lineTo(place.left() + side * 0.2, place.top() + side * 0.28);
    shackle.arcTo(QRectF(place.left() + side * 0.2, place.top(), side * 0.6, side * 0.6), 180, -180);
    shackle.lineTo(place.left() + side * 0.8, place.center().y());
    painter.drawPath(shackle);
    painter.fillRect(QRectF(place.left(), place.center().y() - side * 0.04, side, place.height() / 2), colour);
}

}

RecordGutter::RecordGutter(RecordRows& rows, QTableView& list)
    : QHeaderView(Qt::Vertical, &list)
    , m_rows(rows)
    , m_list(list)
{
    setHighlightSections(false);
    viewport()->setMouseTracking(true);
}

QSize RecordGutter::sizeHint() const { return { Measures(*this).ems(GutterWidth), 0 }; }

void RecordGutter::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
    painter.setRenderHint(QPainter::Antialiasing);
    const int first = std::max(0, logicalIndexAt(0));
    for (int row = first; row < count() && sectionViewportPosition(row) <= event->rect().bottom(); ++row)
        paintRow(painter, row);
}

void RecordGutter::paintRow(QPainter& painter, int row) const
{
    const ListedRecord* const record = m_rows.record(row);
    const int top = sectionViewportPosition(row);
    if (!record)
        return;
    const QRect place(0, top, width(), sectionSize(row));
    const bool isCurrent = m_list.currentIndex().row() == row;
    const bool isSelected = isCurrent && m_list.selectionModel()->isSelected(m_list.currentIndex());
    if (isSelected)
        painter.fillRect(place, colourOf(Ink::SelectionTint, palette()));
    if (record->isOfCurrentVisit) {
        const int width = Measures(*this).ems(BarWidth);
        painter.fillRect(place.left(), top, width, place.height(), colourOf(Ink::Visit, palette()));
    }
    paintMarks(painter, row, place);
    paintGone(painter, row, top);
    if (row + 1 == count())
        paintGone(painter, row + 1, top + place.height());
    if (isSelected || (isCurrent && m_list.hasFocus())) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        drawRowFrame(painter, place.adjusted(0, 0, place.width(), 0), *this, m_list.hasFocus()); // goes on in the row
        painter.setRenderHint(QPainter::Antialiasing);
    }
}

void RecordGutter::paintMarks(QPainter& painter, int row, const QRect& place) const
{
    const RowMeasures measures(m_list);
    const double em = Measures(*this).em();
    const auto square = [&](double middle, double size) {
        QRectF box(0, 0, size * em, size * em);
        box.moveCenter({ middle * em, place.top() + measures.above + measures.line / 2.0 });
        return box;
    };
    const QColor news = colourOf(Ink::News, palette());
    if (m_rows.mark(row) == RecordNews::Mark::New)
        drawDot(painter, square(NewsMiddle, MarkSize), news);
    if (m_rows.mark(row) == RecordNews::Mark::Changed)
        drawTriangle(painter, square(NewsMiddle, MarkSize), news);
    if (m_rows.record(row)->isLocked) {
        QRectF lock = square(LockMiddle, MarkSize);
        lock.adjust(0, -lock.height() * 0.15, 0, lock.height() * 0.15);
        drawPadlock(painter, lock, colourOf(Ink::Quiet, palette()));
    }
}

// On the border between the rows, in the place where the record was.
void RecordGutter::paintGone(QPainter& painter, int row, int y) const
{
    if (m_rows.goneBefore(row).isEmpty())
        return;
    const double em = Measures(*this).em();
    const double side = MarkSize * em * 0.7;
    QRectF box(0, 0, side, side);
    const int half = qRound(side / 2) + 1;
    box.moveCenter({ NewsMiddle * em, static_cast<double>(std::clamp(y, half, viewport()->height() - half)) });
    drawCross(painter, box, colourOf(Ink::News, palette()));
}

QString RecordGutter::marksAt(int y) const
{
    const int row = logicalIndexAt(y);
    if (row < 0)
        return {};
    QStringList words = m_rows.marksInWords(row);
    const int top = sectionViewportPosition(row);
    const int near = Measures(*this).ems(MarkSize);
    if (y < top + near)
        words.append(goneInWords(m_rows.goneBefore(row)));
    if (y > top + sectionSize(row) - near)
        words.append(goneInWords(m_rows.goneBefore(row + 1)));
    words.removeAll(QString());
    return words.join(u'\n');
}

bool RecordGutter::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), marksAt(help->pos().y()), viewport());
        return true;
    }
    return passToRow(event) || QHeaderView::viewportEvent(event);
}

// The row gets the mouse's events at its left edge.
bool RecordGutter::passToRow(QEvent* event)
{
    QWidget* const row = m_list.viewport();
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
        const auto* const mouse = static_cast<QMouseEvent*>(event);
        QMouseEvent passed(mouse->type(), QPointF(1, mouse->position().y()), mouse->globalPosition(), mouse->button(),
            mouse->buttons(), mouse->modifiers());
        QCoreApplication::sendEvent(row, &passed);
        return true;
    }
    case QEvent::ContextMenu: {
        const auto* const menu = static_cast<QContextMenuEvent*>(event);
        QContextMenuEvent passed(menu->reason(), QPoint(1, menu->pos().y()), menu->globalPos(), menu->modifiers());
        QCoreApplication::sendEvent(row, &passed);
        return true;
    }
    case QEvent::MouseMove: // no sections to resize here
        return true;
    default:
        return false;
    }
}

}
