#include "host/desktop/TextSize.h"

#include <QApplication>
#include <QProxyStyle>
#include <QStyleOption>

#include <algorithm>

namespace health {

namespace {

constexpr double Smallest = 0.7;
constexpr double Largest = 3;

// The desktop's style with its pixel metrics enlarged by a factor.
class GrownStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    double factor = 1;

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        const int natural = QProxyStyle::pixelMetric(metric, option, widget);
        switch (metric) {
        case PM_ButtonMargin:
        case PM_ButtonIconSize:
        case PM_SmallIconSize:
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
        case PM_CheckBoxLabelSpacing:
        case PM_RadioButtonLabelSpacing:
        case PM_ScrollBarExtent:
        case PM_ScrollBarSliderMin:
            return static_cast<int>(natural * std::max(1.0, factor));
        default:
            return natural;
        }
    }
};

// Installs the style on the first call.
GrownStyle& grownStyle()
{
    if (auto* const style = dynamic_cast<GrownStyle*>(QApplication::style()))
        return *style;
    auto* const style = new GrownStyle(QApplication::style()->name());
    QApplication::setStyle(style);
    return *style;
}

}

TextSize::TextSize(QObject* parent)
    : QObject(parent)
    , m_natural(QApplication::font())
{
    grownStyle();
}

TextSize::~TextSize() { setFactor(1); }

void TextSize::setFactor(double factor)
{
    factor = std::clamp(factor, Smallest, Largest);
    if (factor == m_factor)
        return;
    m_factor = factor;
    grownStyle().factor = factor;
    QFont font = m_natural;
    font.setPointSizeF(m_natural.pointSizeF() * factor);
    QApplication::setFont(font);
    // setFont may have notified a window before the widgets whose texts it measures. Now all of them have the font, so
    // each is notified again.
    for (QWidget* const widget : QApplication::allWidgets()) {
        QEvent event(QEvent::StyleChange);
        QCoreApplication::sendEvent(widget, &event);
    }
}

}
