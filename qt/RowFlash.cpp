#include "qt/RowFlash.h"

#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QPainter>
#include <QWidget>

namespace health {

namespace {
constexpr int RowFlashMilliseconds = 1500;
constexpr float Opacity = 0.2F;
}

RowFlash::RowFlash(QWidget& rows)
    : m_rows(rows)
{
    m_end.setSingleShot(true);
    m_end.setInterval(RowFlashMilliseconds);
    QObject::connect(&m_end, &QTimer::timeout, &rows, [&rows] { rows.update(); });
}

void RowFlash::start(int row)
{
    m_row = row;
    m_end.start();
    m_rows.update();
}

void RowFlash::paint(QPainter& painter, const QRect& place) const
{
    painter.save();
    QColor colour = colourOf(Ink::Good, m_rows.palette());
    painter.setPen(QPen(colour, Measures(m_rows).focusFrame()));
    colour.setAlphaF(Opacity);
    painter.setBrush(colour);
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    painter.restore();
}

}
