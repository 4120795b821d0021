#include "qt/CalendarButton.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QPainter>

namespace health {

CalendarButton::CalendarButton(QWidget* parent)
    : QToolButton(parent)
{
    setFocusPolicy(Qt::NoFocus); // Alt+Down in the field opens the calendar too
    setCursor(Qt::ArrowCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize CalendarButton::sizeHint() const
{
    const Measures measures(*this);
    return { measures.ems(1.3), measures.em() };
}

// A sheet with two rings, a line below its heading and six days, on a grid of 14 units.
void CalendarButton::paintEvent(QPaintEvent*)
{
    const Measures measures(*this);
    const double side = measures.ems(0.78);
    const Ink ink = underMouse() || isDown() ? Ink::Words : Ink::Quiet;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate((width() - side) / 2, (height() - side) / 2);
    painter.scale(side / 14, side / 14);
    painter.setPen(QPen(isEnabled() ? colourOf(ink, palette()) : fadedColourOf(ink, palette()), 1.2));
    painter.drawRoundedRect(QRectF(0.6, 1.8, 12.8, 11.6), 1.6, 1.6);
    painter.drawLine(QPointF(0.6, 5.2), QPointF(13.4, 5.2));
    for (const double x : { 4.0, 10.0 })
        painter.drawLine(QPointF(x, 0.2), QPointF(x, 3.2));
    for (const double x : { 3.4, 6.4, 9.4 }) {
        for (const double y : { 7.3, 10.1 })
            painter.fillRect(QRectF(x, y, 1.4, 1.4), painter.pen().color());
    }
}

}
