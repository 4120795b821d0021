#include "qt/OutlineStyle.h"

#include "toolkit/Contrast.h"

#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

#include <memory>

namespace health {

namespace {

// A frame with less contrast to the background is invisible.
constexpr double VisibleContrast = 1.3;

// Child of a widget; keeps the style during the widget's life.
struct StyleUse : QObject {
    StyleUse(QWidget& widget, std::shared_ptr<OutlineStyle> used)
        : QObject(&widget)
        , style(std::move(used))
    {
    }

    std::shared_ptr<OutlineStyle> style;
};

QPen outlinePen(const QStyleOption& option)
{
    const QPalette::ColorGroup group = option.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled;
    QColor outline = option.palette.color(group, QPalette::WindowText);
    outline.setAlphaF(0.7F);
    return outline;
}

// Styles draw frames in a darker shade of the window's colour.
bool losesFrames(const QPalette& palette)
{
    return contrast(palette.color(QPalette::Window).darker(140), palette.color(QPalette::Base)) < VisibleContrast;
}

void drawOutline(const QStyleOption& option, QPainter& painter)
{
    // The style already frames the widget with the focus.
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
    static std::weak_ptr<OutlineStyle> shared;
    std::shared_ptr<OutlineStyle> style = shared.lock();
    if (!style)
        shared = style = std::shared_ptr<OutlineStyle>(new OutlineStyle);
    new StyleUse(widget, style);
    widget.setStyle(style.get());
}

OutlineStyle::OutlineStyle()
    : QProxyStyle(QApplication::style()->name())
{
    watchApplication();
}

// The application destroys its style after it has installed another one.
void OutlineStyle::watchApplication()
{
    connect(QApplication::style(), &QObject::destroyed, this, &OutlineStyle::followApplication);
}

void OutlineStyle::followApplication()
{
    if (QCoreApplication::closingDown())
        return;
    watchApplication();
    setBaseStyle(QStyleFactory::create(QApplication::style()->name()));
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (widget->style() == this)
            widget->setStyle(this); // the application repolishes only widgets without a style of their own
    }
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
