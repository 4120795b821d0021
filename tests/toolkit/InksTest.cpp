#include "toolkit/Inks.h"

#include "toolkit/Contrast.h"
#include "toolkit/Measures.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace health::test {
namespace {

QPalette paletteOf(QRgb text, QRgb base, QRgb window, QRgb highlight, QRgb highlighted)
{
    QPalette palette;
    for (const auto role : { QPalette::Text, QPalette::WindowText, QPalette::ButtonText })
        palette.setColor(role, QColor(text));
    palette.setColor(QPalette::Base, QColor(base));
    palette.setColor(QPalette::Window, QColor(window));
    palette.setColor(QPalette::Highlight, QColor(highlight));
    palette.setColor(QPalette::HighlightedText, QColor(highlighted));
    return palette;
}

const QList<QPalette> Desktops = {
    paletteOf(0x1A1C1F, 0xFFFFFF, 0xF3F4F6, 0x2563B8, 0xFFFFFF),
    paletteOf(0x000000, 0xFFFFFF, 0xEFEFEF, 0x308CC6, 0xFFFFFF), // Fusion: its highlight is too light
    paletteOf(0xE6E8EB, 0x1B1E22, 0x23262B, 0x3D7BCB, 0xFFFFFF),
    paletteOf(0xFFFFFF, 0x2D2D2D, 0x353535, 0xE0A020, 0xFFFFFF),
    paletteOf(0xFFFFFF, 0x000000, 0x000000, 0xFFFF00, 0x000000), // high contrast
    paletteOf(0x000000, 0xFFFFFF, 0xFFFFFF, 0xCCE8FF, 0x000000), // a pale highlight
};

double least(Ink ink, const QPalette& palette, const QList<QColor>& backgrounds)
{
    double least = 21;
    for (const QColor& background : backgrounds)
        least = std::min(least, contrast(colourOf(ink, palette), background));
    return least;
}

TEST(Inks, AreReadableOnEveryDesktop)
{
    for (const QPalette& palette : Desktops) {
        SCOPED_TRACE(palette.color(QPalette::Window).name().toStdString());
        const QColor base = palette.color(QPalette::Base);
        const QColor window = palette.color(QPalette::Window);
        const QColor tint = colourOf(Ink::SelectionTint, palette);
        for (const Ink ink :
            { Ink::Words, Ink::Quiet, Ink::Visit, Ink::VisitCaption, Ink::News, Ink::Caution, Ink::Error, Ink::Good })
            EXPECT_GE(least(ink, palette, { base, window, tint }), ReadableContrast) << static_cast<int>(ink);
        EXPECT_GE(least(Ink::Visit, palette, { base, window, tint }), 6);
        EXPECT_GE(least(Ink::FieldFrame, palette, { base, window }), base == window ? 7 : 3);
        EXPECT_GE(least(Ink::Focus, palette, { base, window }), 3);
        EXPECT_GE(least(Ink::Highlight, palette, { palette.color(QPalette::HighlightedText) }), ReadableContrast);
        EXPECT_GE(contrast(palette.color(QPalette::Text), colourOf(Ink::CautionTint, palette)), ReadableContrast);
        for (const Ink severity : { Ink::Severity1, Ink::Severity2, Ink::Severity3, Ink::Severity4 })
            EXPECT_GE(contrast(wordsOn(severity, palette), colourOf(severity, palette)), ReadableContrast);
    }
}

// A hue that the desktop does not force to move stays the designer's; quiet words are quieter than text.
TEST(Inks, StayWhatTheyAreWhereTheyCan)
{
    const QPalette& light = Desktops.front();
    EXPECT_EQ(colourOf(Ink::Visit, light).name(), QStringLiteral("#163ac6"));
    EXPECT_EQ(colourOf(Ink::Error, light).name(), QStringLiteral("#c4222c"));
    EXPECT_EQ(colourOf(Ink::Highlight, light), light.color(QPalette::Highlight));
    for (const QPalette& palette : Desktops) {
        const QColor base = palette.color(QPalette::Base);
        EXPECT_LT(contrast(colourOf(Ink::Quiet, palette), base), contrast(palette.color(QPalette::Text), base));
    }
}

TEST(Measures, FollowTheFont)
{
    QLabel small;
    QLabel large;
    QFont font = small.font();
    font.setPixelSize(13);
    small.setFont(font);
    font.setPixelSize(26);
    large.setFont(font);
    const Measures one(small);
    const Measures two(large);
    EXPECT_GE(one.em(), small.fontMetrics().height());
    EXPECT_GE(one.em(), 17);
    EXPECT_EQ(one.u(), 4);
    EXPECT_NEAR(two.fieldHeight(), 2 * one.fieldHeight(), 3);
    EXPECT_EQ(one.hairline(), 1);
    EXPECT_EQ(two.hairline(), 2);
}

}
}
