#include "toolkit/Contrast.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

TEST(Contrast, RatiosOfTheGuidelines)
{
    for (const auto& [one, other, ratio] :
        { std::tuple<Colour, Colour, double> { 0x000000, 0xFFFFFF, 21 }, { 0xFFFFFF, 0x000000, 21 },
            { 0x123456, 0x123456, 1 }, { 0x767676, 0xFFFFFF, 4.54 }, { 0x777777, 0xFFFFFF, 4.48 },
            { Blue, 0xFFFFFF, 8.59 }, { 0x0000FF, 0xFFFFFF, 4.00 }, { Blue, 0x000000, 2.44 } })
        EXPECT_NEAR(contrast(one, other), ratio, 0.01) << std::hex << one << ' ' << other;
}

TEST(Contrast, ColoursChangeNoMoreThanNeeded)
{
    EXPECT_EQ(mixed(0x000000, 0xFFFFFF, 0.5), 0x808080u);
    EXPECT_EQ(mixed(0x112233, 0xFFFFFF, 1), 0x112233u);
    EXPECT_EQ(readableOn(Blue, { 0xFFFFFF, 0xF0F0F0 }), Blue);
    const Colour onDark = readableOn(Blue, { 0x191919, 0x353535 });
    EXPECT_GE(contrast(onDark, 0x353535), ReadableContrast);
    EXPECT_LT(contrast(onDark, 0x353535), 6);
    EXPECT_EQ(onDark >> 16, 0xFFu); // a blue still
    EXPECT_EQ(readableOn(Blue, { 0x101010, 0xFFFFFF }), 0x000000u); // nothing is readable on both
}

}
}
