#include "toolkit/Contrast.h"

#include <algorithm>
#include <cmath>

namespace health {

namespace {

constexpr Colour Black = 0x000000;
constexpr Colour White = 0xFFFFFF;
constexpr int Steps = 20;

int channel(Colour colour, int index) { return static_cast<int>(colour >> 8 * index & 0xFF); }

double luminance(Colour colour)
{
    static constexpr double weights[] = { 0.2126, 0.7152, 0.0722 }; // red, green, blue
    double sum = 0;
    for (int i = 0; i < 3; ++i) {
        const double value = channel(colour, i) / 255.0;
        sum += weights[i] * (value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return sum;
}

double leastContrast(Colour colour, std::initializer_list<Colour> grounds)
{
    double least = 21;
    for (const Colour ground : grounds)
        least = std::min(least, contrast(colour, ground));
    return least;
}

}

double contrast(Colour one, Colour other)
{
    const auto [darker, lighter] = std::minmax({ luminance(one), luminance(other) });
    return (lighter + 0.05) / (darker + 0.05);
}

Colour mixed(Colour colour, Colour ground, double part)
{
    Colour result = 0;
    for (int i = 0; i < 3; ++i) {
        const double value = channel(colour, i) * part + channel(ground, i) * (1 - part);
        result |= static_cast<Colour>(std::lround(value)) << 8 * i;
    }
    return result;
}

Colour readableOn(Colour wanted, std::initializer_list<Colour> grounds)
{
    const Colour towards = leastContrast(White, grounds) > leastContrast(Black, grounds) ? White : Black;
    for (int step = 0; step < Steps; ++step) {
        const Colour colour = mixed(towards, wanted, static_cast<double>(step) / Steps);
        if (leastContrast(colour, grounds) >= ReadableContrast)
            return colour;
    }
    return towards;
}

}
