#pragma once

#include <QProxyStyle>

namespace health {

// The application's style, with an outline around check boxes and option buttons, and around fields and lists where the
// palette leaves no visible frame: most styles draw these outlines invisibly on dark backgrounds.
class OutlineStyle : public QProxyStyle {
    Q_OBJECT
public:
    // Gives a widget the style. All widgets share one object, which lives as long as the last of them and follows
    // changes of the application's style.
    static void giveTo(QWidget& widget);

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override;
    void drawControl(
        ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
        const QWidget* widget) const override;
    // Asks the application's own style object, which the host may have adapted.
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;

private:
    OutlineStyle();
    void watchApplication();
    void followApplication();
};

}
