#include "host/desktop/ProgramIcon.h"

#include <QPainter>

namespace health {

namespace {

constexpr double Unit = 16; // the drawing's width and height

QPixmap picture(int side)
{
    const QColor blue(0x1f, 0x5f, 0x8b);
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / Unit, side / Unit);
    painter.setPen(blue);
    painter.setBrush(QColor(0xf4, 0xf9, 0xfc));
    painter.drawRoundedRect(QRectF(1.5, 0.5, 13, 15), 1.5, 1.5);
    painter.drawLine(QPointF(4, 11.5), QPointF(12, 11.5));
    painter.drawLine(QPointF(4, 13.5), QPointF(10, 13.5));
    for (const QRectF& bar : { QRectF(6.8, 2.5, 2.4, 7), QRectF(4.5, 4.8, 7, 2.4) })
        painter.fillRect(bar, QColor(0x1f, 0x7a, 0x4d));
    return pixmap;
}

}

QIcon programIcon()
{
    QIcon icon;
    for (const int side : { 16, 24, 32, 48, 64, 128 })
        icon.addPixmap(picture(side));
    return icon;
}

}
