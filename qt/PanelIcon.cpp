#include "qt/PanelIcon.h"

#include <QPainter>

namespace health {

QPixmap panelIcon(int side, qreal devicePixelRatio)
{
    QPixmap pixmap(QSize(side, side) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 16.0, side / 16.0);

    painter.setPen(QPen(QColor(0x1f, 0x5f, 0x8b), 1));
    painter.setBrush(QColor(0xf4, 0xf9, 0xfc));
    painter.drawRoundedRect(QRectF(1.5, 0.5, 13, 15), 1.5, 1.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1f, 0x7a, 0x4d));
    painter.drawRect(QRectF(6.8, 2.5, 2.4, 7));
    painter.drawRect(QRectF(4.5, 4.8, 7, 2.4));
    painter.setPen(QPen(QColor(0x1f, 0x5f, 0x8b), 1));
    painter.drawLine(QPointF(4, 11.5), QPointF(12, 11.5));
    painter.drawLine(QPointF(4, 13.5), QPointF(10, 13.5));
    return pixmap;
}

}
