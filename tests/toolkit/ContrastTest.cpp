#include "toolkit/Contrast.h"

#include <gtest/gtest.h>

namespace health::test {

TEST(Contrast, RatiosOfTheGuidelines)
{
    for (const auto& [one, other, ratio] :
        { std::tuple<const char*, const char*, double> { "#000000", "#ffffff", 21 }, { "#ffffff", "#000000", 21 },
            { "#123456", "#123456", 1 }, { "#767676", "#ffffff", 4.54 }, { "#777777", "#ffffff", 4.48 },
            { "#0000ff", "#ffffff", 8.59 }, { "#ff0000", "#ffffff", 4.00 }, { "#0000ff", "#000000", 2.44 } })
        EXPECT_NEAR(contrast(QColor(one), QColor(other)), ratio, 0.01) << one << ' ' << other;
}

TEST(Contrast, ColoursChangeNoMoreThanNeeded)
{
    EXPECT_EQ(mixed(Qt::black, Qt::white, 0.5), QColor("#808080"));
    EXPECT_EQ(mixed("#332211", Qt::white, 1), QColor("#332211"));
    EXPECT_EQ(readableOn(Qt::blue, { Qt::white, "#f0f0f0" }), QColor(Qt::blue));
    const QColor onDark = readableOn(Qt::blue, { "#191919", "#353535" });
    EXPECT_GE(contrast(onDark, "#353535"), ReadableContrast);
    EXPECT_LT(contrast(onDark, "#353535"), 6);
    EXPECT_EQ(onDark.blue(), 0xFF); // still blue
    EXPECT_EQ(readableOn(Qt::blue, { "#101010", Qt::white }), QColor(Qt::black)); // nothing is readable on both
}

}
