#pragma once

#include <QProxyStyle>

namespace health {

// The desktop's style, with an outline around the boxes and circles of choices: on dark grounds most styles let an
// empty one vanish.
class IndicatorStyle : public QProxyStyle {
    Q_OBJECT
public:
    // Gives a widget the style; it goes with the widget.
    static void giveTo(QWidget& widget);

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override;

private:
    using QProxyStyle::QProxyStyle;
};

}
