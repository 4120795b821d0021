#include "qt/OutlineStyle.h"

#include "toolkit/Colours.h"
#include "toolkit/Contrast.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace health {

namespace {

// What a frame needs against the ground to be seen at all.
constexpr double VisibleContrast = 1.3;

QPen outlinePen(const QStyleOption& option)
{
    const QPalette::ColorGroup group = option.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled;
    QColor outline = option.palette.color(group, QPalette::WindowText);
    outline.setAlphaF(0.7F);
    return outline;
}

// The style draws frames in a darker shade of the window's colour.
bool losesFrames(const QPalette& palette)
{
    const Colour frame = colourNumber(palette.color(QPalette::Window).darker(140));
    return contrast(frame, colourNumber(palette.color(QPalette::Base))) < VisibleContrast;
}

void drawOutline(const QStyleOption& option, QPainter& painter)
{
    // Who has the focus has its own frame.
    if (!losesFrames(option.palette) || (option.state & QStyle::State_HasFocus))
        return;
    painter.save();
    painter.setPen(outlinePen(option));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

}

void OutlineStyle::giveTo(QWidget& widget)
{
    auto* const style = new OutlineStyle(QApplication::style()->name());
    style->setParent(&widget);
    widget.setStyle(style);
}

int OutlineStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    return QApplication::style()->pixelMetric(metric, option, widget);
}

void OutlineStyle::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ShapedFrame)
        drawOutline(*option, *painter);
}

void OutlineStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox)
        drawOutline(*option, *painter);
}

void OutlineStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_FrameLineEdit || element == PE_PanelLineEdit)
        return drawOutline(*option, *painter);
    const bool round = element == PE_IndicatorRadioButton;
    if (!round && element != PE_IndicatorCheckBox && element != PE_IndicatorItemViewItemCheck)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(outlinePen(*option));
    painter->setBrush(Qt::NoBrush);
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (round)
        painter->drawEllipse(frame);
    else
        painter->drawRect(frame);
    painter->restore();
}

}
