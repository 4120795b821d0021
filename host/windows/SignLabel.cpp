#include "host/windows/SignLabel.h"

#include "toolkit/Measures.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace health {

namespace {

constexpr double SignSide = 0.8; // em

// Signs are drawn in a square of 16 units.
constexpr double Grid = 16;

void drawCaution(QPainter& painter)
{
    painter.drawEllipse(QPointF(8, 8), 6.5, 6.5);
    painter.drawLine(QPointF(8, 4.8), QPointF(8, 8.6));
    painter.drawPoint(QPointF(8, 11.2));
}

void drawCalendar(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(2, 3.2, 12, 10.8), 1.2, 1.2);
    painter.drawLine(QPointF(2, 6.6), QPointF(14, 6.6));
    for (const double x : { 5.2, 10.8 })
        painter.drawLine(QPointF(x, 1.6), QPointF(x, 4.4));
    for (const double x : { 5.0, 8.0, 11.0 }) {
        for (const double y : { 9.0, 11.6 })
            painter.drawPoint(QPointF(x, y));
    }
}

// A plug and a socket apart.
void drawDisconnected(QPainter& painter)
{
    painter.drawLine(QPointF(0.8, 8), QPointF(5, 8));
    painter.drawLine(QPointF(5.4, 4.5), QPointF(5.4, 11.5));
    painter.drawLine(QPointF(10.6, 4.5), QPointF(10.6, 11.5));
    painter.drawLine(QPointF(11, 8), QPointF(15.2, 8));
}

void drawCheck(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({ QPointF(2.6, 8.6), QPointF(6.4, 12.2), QPointF(13.4, 4.2) }));
}

}

void drawSign(QPainter& painter, const QRect& place, Sign sign, const QColor& colour)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.topLeft());
    painter.scale(place.width() / Grid, place.height() / Grid);
    painter.setPen(QPen(colour, sign == Sign::Check ? 2.2 : 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (sign) {
    case Sign::Caution:
        drawCaution(painter);
        break;
    case Sign::Calendar:
        drawCalendar(painter);
        break;
    case Sign::Check:
        drawCheck(painter);
        break;
    case Sign::Disconnected:
        drawDisconnected(painter);
        break;
    case Sign::Bar:
    case Sign::None:
        break;
    }
    painter.restore();
}

SignLabel::SignLabel()
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void SignLabel::say(const QString& text, Sign sign, Ink signInk, Ink textInk)
{
    m_sign = sign;
    m_signInk = signInk;
    m_textInk = textInk;
    setText(text);
    // Screen readers do not stop at an empty text.
    setTextInteractionFlags(text.isEmpty() ? Qt::NoTextInteraction : Qt::TextSelectableByMouse);
    makeRoom();
    applyInk();
    update();
}

void SignLabel::makeRoom()
{
    const Measures measures(*this);
    const int bar = measures.ems(0.22) + measures.units(1.5);
    const int symbol = measures.ems(SignSide) + measures.units(1.5);
    setContentsMargins(m_sign == Sign::None ? 0 : m_sign == Sign::Bar ? bar : symbol, 0, 0, 0);
    updateGeometry();
}

void SignLabel::applyInk()
{
    const QColor colour = colourOf(m_textInk, palette());
    if (palette().color(QPalette::WindowText) == colour)
        return;
    QPalette own;
    own.setColor(QPalette::WindowText, colour);
    setPalette(own);
}

QSize SignLabel::sizeHint() const
{
    const int text = fontMetrics().size(0, this->text()).width() + fontMetrics().averageCharWidth();
    return QSize(text, fontMetrics().height()).grownBy(contentsMargins());
}

QSize SignLabel::minimumSizeHint() const
{
    const QSize natural = sizeHint();
    return { std::min(natural.width(), Measures(*this).ems(8)), natural.height() };
}

void SignLabel::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    const QColor colour = colourOf(m_signInk, palette());
    const Measures measures(*this);
    QPainter painter(this);
    if (m_sign == Sign::Bar)
        return painter.fillRect(0, 0, measures.ems(0.22), height(), colour);
    const int side = measures.ems(SignSide);
    // Beside the first line of the text, which is centred in the label.
    const int line = fontMetrics().height();
    // Not heightForWidth(): for a selectable text it requests another painting.
    const QRect room(0, 0, contentsRect().width(), QWIDGETSIZE_MAX);
    const int text = wordWrap() ? fontMetrics().boundingRect(room, Qt::TextWordWrap, this->text()).height() : line;
    const int top = contentsRect().top() + std::max(0, (contentsRect().height() - text) / 2);
    drawSign(painter, { 0, top + (line - side) / 2, side, side }, m_sign, colour);
}

void SignLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyInk();
    if (event->type() == QEvent::FontChange)
        makeRoom();
}

}
