#include "qt/IndicatorStyle.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace health {

void IndicatorStyle::giveTo(QWidget& widget)
{
    auto* const style = new IndicatorStyle(QApplication::style()->name());
    style->setParent(&widget);
    widget.setStyle(style);
}

void IndicatorStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool round = element == PE_IndicatorRadioButton;
    if (!round && element != PE_IndicatorCheckBox && element != PE_IndicatorItemViewItemCheck)
        return;
    const QPalette::ColorGroup group = option->state & State_Enabled ? QPalette::Active : QPalette::Disabled;
    QColor outline = option->palette.color(group, QPalette::WindowText);
    outline.setAlphaF(0.7F);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (round)
        painter->drawEllipse(frame);
    else
        painter->drawRect(frame);
    painter->restore();
}

}
