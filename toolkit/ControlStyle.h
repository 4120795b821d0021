#pragma once

#include <QProxyStyle>

class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionViewItem;

namespace health {

// Dynamic properties of widgets that the style follows.
inline constexpr char FaultProperty[] = "fault"; // why the field's last entry was refused; see Control::fault()
inline constexpr char FlashProperty[] = "flash"; // whether the program has just changed the field
inline constexpr char FilledProperty[] = "filled"; // whether the button is the one that saves

// The application's style with a look of fields, lists, buttons and choices that is the same on each desktop, follows
// palette and font, and shows frames and focus on each background.
class ControlStyle : public QProxyStyle {
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
    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
        const QWidget* widget) const override;
    QSize sizeFromContents(
        ContentsType type, const QStyleOption* option, const QSize& contents, const QWidget* widget) const override;
    // Lengths that are not the look's own are those of the application's own style object, which the host may have
    // adapted.
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;

private:
    ControlStyle();
    void watchApplication();
    void followApplication();

    void drawChoiceButton(const QStyleOptionButton& option, QPainter& painter, const QWidget& widget) const;
    void drawButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget& widget) const;
    void drawAnswer(const QStyleOptionComboBox& option, QPainter& painter, const QWidget& widget) const;
    void drawCheckRow(const QStyleOptionViewItem& option, QPainter& painter, const QWidget& widget) const;
    int mnemonicFlag(const QStyleOption& option, const QWidget& widget) const;
};

}
