#include "toolkit/Contrast.h"

#include <algorithm>
#include <cmath>

namespace health {

namespace {

constexpr int Steps = 20;

double luminance(const QColor& colour)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.red()) + 0.7152 * linear(colour.green()) + 0.0722 * linear(colour.blue());
}

double leastContrast(const QColor& colour, std::initializer_list<QColor> backgrounds)
{
    double least = 21;
    for (const QColor& background : backgrounds)
        least = std::min(least, contrast(colour, background));
    return least;
}

}

double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({ luminance(one), luminance(other) });
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor& colour, const QColor& background, double part)
{
    const auto mix = [part](int above, int below) {
        return static_cast<int>(std::lround(above * part + below * (1 - part)));
    };
    return { mix(colour.red(), background.red()), mix(colour.green(), background.green()),
        mix(colour.blue(), background.blue()) };
}

QColor readableOn(const QColor& colour, std::initializer_list<QColor> backgrounds)
{
    const QColor target =
        leastContrast(Qt::white, backgrounds) > leastContrast(Qt::black, backgrounds) ? Qt::white : Qt::black;
    for (int step = 0; step < Steps; ++step) {
        const QColor candidate = mixed(target, colour, static_cast<double>(step) / Steps);
        if (leastContrast(candidate, backgrounds) >= ReadableContrast)
            return candidate;
    }
    return target;
}

}
