#include "toolkit/Inks.h"

#include "toolkit/Contrast.h"

#include <QHash>

#include <algorithm>
#include <array>

namespace health {

namespace {

constexpr double QuietContrast = 5;
constexpr double VisitContrast = 6;
constexpr double LineContrast = 3; // the guidelines' minimum for edges of controls
constexpr double LineContrastWhenFlat = 7;
constexpr int MixingSteps = 100;
constexpr std::size_t InkCount = static_cast<std::size_t>(Ink::HeaderStrip) + 1;

QColor active(const QPalette& palette, QPalette::ColorRole role) { return palette.color(QPalette::Active, role); }

// The first of the colours on the way from `start` to `end` that has the contrast to every background; else `end`.
template<typename Way>
QColor firstWith(double least, const QList<QColor>& backgrounds, Way way)
{
    for (int step = 0; step < MixingSteps; ++step) {
        const QColor colour = way(static_cast<double>(step) / MixingSteps);
        const auto visible = [&](const QColor& background) { return contrast(colour, background) >= least; };
        if (std::all_of(backgrounds.begin(), backgrounds.end(), visible))
            return colour;
    }
    return way(1);
}

// Makes the inks of one palette.
class Mixer {
public:
    explicit Mixer(const QPalette& palette)
        : m_palette(palette)
        , m_base(active(palette, QPalette::Base))
        , m_window(active(palette, QPalette::Window))
        , m_text(active(palette, QPalette::Text))
        , m_dark(isDark(palette))
        , m_tint(mixed(highlight(), m_base, m_dark ? 0.30 : 0.13))
    {
    }

    QColor make(Ink ink) const
    {
        switch (ink) {
        case Ink::Words:
            return m_text;
        case Ink::Quiet:
            return towardsText(m_base, QuietContrast, surfaces());
        case Ink::Visit:
            return accent(visitBlue(), VisitContrast);
        case Ink::VisitCaption:
            return towards(visitBlue(), m_dark ? 1 : 0, ReadableContrast);
        case Ink::News:
            return accent(0x0F8086, ReadableContrast);
        case Ink::Caution:
            return accent(0xA86200, ReadableContrast);
        case Ink::Error:
            return accent(0xC4222C, ReadableContrast);
        case Ink::Good:
            return accent(0x1E7A3C, ReadableContrast);
        default:
            return makeLineOrSurface(ink);
        }
    }

private:
    static QRgb visitBlue() { return 0x163AC6; }
    QList<QColor> surfaces() const { return { m_base, m_window, m_tint }; }

    QColor makeLineOrSurface(Ink ink) const
    {
        switch (ink) {
        case Ink::FieldFrame:
            return towardsText(m_base, isFlat(m_palette) ? LineContrastWhenFlat : LineContrast, { m_base, m_window });
        case Ink::Focus:
            return firstWith(
                LineContrast, { m_base, m_window }, [this](double part) { return mixed(m_text, highlight(), part); });
        case Ink::Hairline:
            return transparent(m_text, m_dark ? 0.17F : 0.12F);
        case Ink::Highlight:
            return highlight();
        case Ink::SelectionTint:
            return m_tint;
        case Ink::CautionTint:
            return mixed(accent(0xA86200, ReadableContrast), m_base, m_dark ? 0.32 : 0.24);
        case Ink::Severity1:
            return severity(0.10);
        case Ink::Severity2:
            return severity(0.22);
        case Ink::Severity3:
            return severity(0.40);
        case Ink::Severity4:
            return severity(m_dark ? 0.86 : 0.74);
        default: // the header strip
            return mixed(active(m_palette, QPalette::WindowText), m_window, 0.045);
        }
    }

    QColor severity(double part) const { return mixed(accent(0xA86200, ReadableContrast), m_base, part); }

    static QColor transparent(QColor colour, float alpha)
    {
        colour.setAlphaF(alpha);
        return colour;
    }

    QColor towardsText(const QColor& start, double least, const QList<QColor>& backgrounds) const
    {
        return firstWith(least, backgrounds, [&](double part) { return mixed(m_text, start, part); });
    }

    // A hue whose lightness moves away from the background until it is readable.
    QColor accent(QRgb hue, double least) const { return towards(hue, QColor(hue).lightnessF(), least); }

    QColor towards(QRgb hue, float from, double least) const
    {
        const QColor seed(hue);
        const float target = m_dark ? 1 : 0;
        const float start = from == target ? 1 - target : from; // from the background's end of the scale
        return firstWith(least, surfaces(), [&](double part) {
            const float lightness = start + (target - start) * static_cast<float>(part);
            return QColor(QColor::fromHslF(seed.hslHueF(), seed.hslSaturationF(), lightness).rgb());
        });
    }

    QColor highlight() const
    {
        const QColor text = active(m_palette, QPalette::HighlightedText);
        const QColor away = contrast(text, Qt::black) > contrast(text, Qt::white) ? Qt::black : Qt::white;
        return firstWith(ReadableContrast, { text },
            [&, colour = active(m_palette, QPalette::Highlight)](double part) { return mixed(away, colour, part); });
    }

    const QPalette& m_palette;
    QColor m_base;
    QColor m_window;
    QColor m_text;
    bool m_dark;
    QColor m_tint;
};

using Colours = std::array<QColor, InkCount>;

Colours coloursOf(const QPalette& palette)
{
    const Mixer mixer(palette);
    Colours colours;
    for (std::size_t i = 0; i < InkCount; ++i)
        colours[i] = mixer.make(static_cast<Ink>(i));
    return colours;
}

}

// Mixing takes too long for each painting.
QColor colourOf(Ink ink, const QPalette& palette)
{
    constexpr int mostPalettes = 32;
    static QHash<qint64, Colours> known;
    auto found = known.find(palette.cacheKey());
    if (found == known.end()) {
        if (known.size() >= mostPalettes)
            known.clear();
        found = known.insert(palette.cacheKey(), coloursOf(palette));
    }
    return found->at(static_cast<std::size_t>(ink));
}

QColor wordsOn(Ink surface, const QPalette& palette)
{
    const QColor ground = colourOf(surface, palette);
    const QColor words = colourOf(Ink::Words, palette);
    const QColor base = active(palette, QPalette::Base);
    return contrast(words, ground) >= contrast(base, ground) ? words : base;
}

QColor fadedColourOf(Ink ink, const QPalette& palette)
{
    return mixed(colourOf(ink, palette), active(palette, QPalette::Window), 0.55);
}

bool isDark(const QPalette& palette)
{
    const QColor base = active(palette, QPalette::Base);
    return contrast(base, Qt::white) > contrast(base, Qt::black);
}

bool isFlat(const QPalette& palette) { return active(palette, QPalette::Base) == active(palette, QPalette::Window); }

}
