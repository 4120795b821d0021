#pragma once

#include <QProxyStyle>

namespace health {

// The desktop's style, with an outline around the boxes and circles of choices, and around fields and lists where the
// palette leaves none: on dark grounds most styles let them vanish.
class OutlineStyle : public QProxyStyle {
    Q_OBJECT
public:
    // Gives a widget the style; it goes with the widget.
    static void giveTo(QWidget& widget);

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override;
    void drawControl(
        ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
        const QWidget* widget) const override;
    // As large as those of the whole program.
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;

private:
    using QProxyStyle::QProxyStyle;
};

}
