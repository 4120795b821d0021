#include "qt/RowPainting.h"

#include "toolkit/ControlPainting.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include <algorithm>

namespace health {

namespace {

constexpr double SymbolSize = 2.1; // em

// A circle with "!".
void drawWarning(QPainter& painter, const QRectF& place, const QColor& colour)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const double width = place.width() / 9;
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(place.adjusted(width / 2, width / 2, -width / 2, -width / 2));
    const double middle = place.center().x();
    const auto at = [&](double part) { return QPointF(middle, place.top() + place.height() * part); };
    painter.drawLine(at(0.28), at(0.54));
    painter.drawPoint(at(0.72));
}

void drawPerson(QPainter& painter, const QRectF& place)
{
    const double side = place.width();
    painter.drawEllipse(QPointF(place.center().x(), place.top() + side * 0.26), side * 0.2, side * 0.2);
    QPainterPath shoulders(QPointF(place.left() + side * 0.1, place.bottom() - side * 0.04));
    shoulders.cubicTo(place.left() + side * 0.1, place.top() + side * 0.5, place.left() + side * 0.9,
        place.top() + side * 0.5, place.left() + side * 0.9, place.bottom() - side * 0.04);
    painter.drawPath(shoulders);
}

void drawSheet(QPainter& painter, const QRectF& place)
{
    const double side = place.width();
    painter.drawRoundedRect(place.adjusted(side * 0.14, side * 0.04, -side * 0.14, -side * 0.04), side / 12, side / 12);
    for (const double line : { 0.3, 0.5, 0.7 }) {
        const double right = line > 0.6 ? 0.54 : 0.66;
        painter.drawLine(QPointF(place.left() + side * 0.34, place.top() + side * line),
            QPointF(place.left() + side * right, place.top() + side * line));
    }
}

void drawSymbolOf(StateSymbol symbol, QPainter& painter, const QRectF& place, const QColor& colour)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, place.width() / 11, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (symbol == StateSymbol::Person)
        drawPerson(painter, place);
    else if (symbol == StateSymbol::Sheet)
        drawSheet(painter, place);
}

QFont titleFont(const QWidget& list) { return semibold(scaled(list.font(), TypeSize::StateTitle)); }

// Draws a wrapped text below `top`; returns its bottom.
int drawCentred(QPainter& painter, const QRect& room, int top, const QString& text)
{
    QRect used;
    painter.drawText(QRect(room.left(), top, room.width(), room.height()),
        Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, text, &used);
    return used.bottom() + 1;
}

int heightOf(const QRect& room, const QWidget& list, const ListState& state)
{
    const auto height = [&](const QFont& font, const QString& text) {
        return QFontMetrics(font).boundingRect(room, Qt::TextWordWrap, text).height();
    };
    int sum = height(titleFont(list), state.title);
    for (const QString& line : state.lines)
        sum += height(list.font(), line);
    return sum + (state.lines.isEmpty() ? 0 : Measures(list).u());
}

QRect textRoom(const QRect& room, const QWidget& list)
{
    const int margin = Measures(list).windowMargin();
    return room.adjusted(margin, 0, -margin, 0);
}

}

void drawRowFrame(QPainter& painter, const QRect& row, const QWidget& list, bool focused)
{
    const Measures measures(list);
    const int width = focused ? measures.focusFrame() : measures.hairline();
    const QColor colour = colourOf(focused ? Ink::Focus : Ink::FieldFrame, list.palette());
    painter.fillRect(row.left(), row.top(), row.width(), width, colour);
    painter.fillRect(row.left(), row.bottom() + 1 - width, row.width(), width, colour);
    painter.fillRect(row.left(), row.top(), width, row.height(), colour);
    painter.fillRect(row.right() + 1 - width, row.top(), width, row.height(), colour);
}

void drawNotice(QPainter& painter, const QRect& strip, const QWidget& list, const QString& text)
{
    const Measures measures(list);
    const QPalette& palette = list.palette();
    painter.save();
    painter.fillRect(strip, palette.color(QPalette::Base));
    painter.fillRect(strip, colourOf(Ink::HeaderStrip, palette));
    painter.fillRect(strip.left(), strip.top(), strip.width(), measures.hairline(), colourOf(Ink::Hairline, palette));
    const int side = measures.ems(0.75);
    const QRectF mark(strip.left() + measures.units(2), strip.center().y() + 1 - side / 2.0, side, side);
    drawWarning(painter, mark, colourOf(Ink::Caution, palette));
    painter.setPen(colourOf(Ink::Words, palette));
    const int left = qRound(mark.right()) + measures.units(1.5);
    const QRect place(left, strip.top(), strip.right() - left, strip.height());
    painter.drawText(
        place, Qt::AlignVCenter | Qt::AlignLeft, list.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
    painter.restore();
}

QRect symbolPlace(const QRect& room, const QWidget& list, const ListState& state)
{
    const Measures measures(list);
    const int side = measures.ems(SymbolSize);
    const int height = heightOf(textRoom(room, list), list, state) + side + measures.groupGap();
    return { room.center().x() - side / 2, std::max(room.top(), room.center().y() - height / 2), side, side };
}

void drawState(QPainter& painter, const QRect& room, const QWidget& list, const ListState& state)
{
    painter.save();
    const Measures measures(list);
    const QRect symbol = symbolPlace(room, list, state);
    drawSymbolOf(state.symbol, painter, symbol, colourOf(Ink::Quiet, list.palette()));
    painter.setFont(titleFont(list));
    painter.setPen(colourOf(Ink::Words, list.palette()));
    const QRect texts = textRoom(room, list);
    int top = drawCentred(painter, texts, symbol.bottom() + measures.groupGap(), state.title) + measures.u();
    painter.setFont(list.font());
    painter.setPen(colourOf(Ink::Quiet, list.palette()));
    for (const QString& line : state.lines)
        top = drawCentred(painter, texts, top, line);
    painter.restore();
}

}
