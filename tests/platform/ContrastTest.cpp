#include "platform/Contrast.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

TEST(Contrast, RatiosOfTheGuidelines)
{
    struct Case {
        Colour one;
        Colour other;
        double ratio;
    };
    for (const Case& pair : { Case { 0x000000, 0xFFFFFF, 21 }, Case { 0xFFFFFF, 0x000000, 21 },
             Case { 0x123456, 0x123456, 1 }, Case { 0x767676, 0xFFFFFF, 4.54 }, Case { 0x777777, 0xFFFFFF, 4.48 },
             Case { Blue, 0xFFFFFF, 8.59 }, Case { 0x0000FF, 0xFFFFFF, 4.00 }, Case { Blue, 0x000000, 2.44 } })
        EXPECT_NEAR(contrast(pair.one, pair.other), pair.ratio, 0.01) << std::hex << pair.one << ' ' << pair.other;
}

TEST(Contrast, ColoursAreChangedNoFurtherThanNeeded)
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
