#include "qt/FocusFrame.h"

#include <QPainter>

namespace health {

void paintFocusFrame(QAbstractScrollArea& area)
{
    if (!area.hasFocus())
        return;
    constexpr int width = 2;
    QPainter painter(area.viewport());
    painter.setPen(QPen(area.palette().color(QPalette::Highlight), width));
    const int inset = width / 2;
    painter.drawRect(area.viewport()->rect().adjusted(inset, inset, -inset, -inset));
}

}
