#include "qt/Scale.h"

#include <QFontInfo>
#include <QWidget>

namespace health {

namespace {
constexpr double MeasuredFontPixels = 11; // 8.25 points at 96 pixels to the inch
constexpr double TwipsPerPixel = 15; // at 96 pixels to the inch
}

Scale::Scale(const QWidget& widget)
    : m_pixelsPerTwip(QFontInfo(widget.font()).pixelSize() / MeasuredFontPixels / TwipsPerPixel)
{
}

int Scale::pixels(int twips) const { return qRound(twips * m_pixelsPerTwip); }

int Scale::twips(int pixels) const { return qRound(pixels / m_pixelsPerTwip); }

QRect Scale::pixels(const Place& place) const
{
    const QPoint topLeft(pixels(place.left), pixels(place.top));
    return QRect(topLeft, QSize(pixels(place.width), pixels(place.height)));
}

}
