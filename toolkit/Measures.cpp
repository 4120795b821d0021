#include "toolkit/Measures.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QWidget>

#include <algorithm>

namespace health {

namespace {

int emOf(const QFont& font, const QFontMetrics& metrics)
{
    return std::max(metrics.height(), qRound(1.3 * QFontInfo(font).pixelSize()));
}

}

Measures::Measures(const QWidget& widget)
    : m_em(emOf(widget.font(), widget.fontMetrics()))
{
}

Measures::Measures(const QFont& font)
    : m_em(emOf(font, QFontMetrics(font)))
{
}

int Measures::units(double number) const { return qRound(number * qRound(m_em / 4.5)); }

int Measures::ems(double number) const { return qRound(number * m_em); }

int Measures::hairline() const { return std::max(1, qRound(m_em / 18.0)); }

QFont scaled(const QFont& font, double factor)
{
    QFont result = font;
    if (font.pointSizeF() > 0)
        result.setPointSizeF(font.pointSizeF() * factor);
    else
        result.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    return result;
}

// A family without semibold is drawn with whatever the font database finds next, often the regular face.
QFont semibold(const QFont& font)
{
    QFont result = font;
    result.setWeight(QFont::DemiBold);
    if (QFontInfo(result).weight() < QFont::DemiBold)
        result.setWeight(QFont::Bold);
    return result;
}

}
