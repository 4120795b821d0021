#include "text/Conversions.h"
#include "api/Utf8.h"
#include "tests/support/ScriptedHost.h"
#include "text/Letters.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace health {

TEST(Conversions, NumericTextsAreNumbersAsAWhole)
{
    const std::pair<TextView, double> accepted[] = { { L"0", 0 }, { L"12", 12 }, { L" 12 ", 12 }, { L"-3", -3 },
        { L"+4", 4 }, { L"12.", 12 }, { L".5", 0.5 }, { L"1E2", 100 }, { L"1e-1", 0.1 }, { L"-0.2", -0.2 } };
    for (const auto& [text, value] : accepted) {
        ASSERT_TRUE(isNumeric(text)) << narrow(text);
        EXPECT_DOUBLE_EQ(*numericValue(text), value) << narrow(text);
    }
    for (const TextView text : { L"", L"  ", L"-", L".", L"+.", L"2K", L"2 3", L"--1", L"1.2.3", L"1E", L"0x10", L"١" })
        EXPECT_FALSE(isNumeric(text)) << narrow(text);
}

TEST(Conversions, LeadingNumberStopsAtTheFirstOtherCharacter)
{
    for (const auto& [text, value] :
        { std::pair<TextView, double> { L"-1\r\n", -1 }, { L"-3abc", -3 }, { L"-", 0 }, { L"", 0 }, { L"word", 0 },
            { L"  7 2", 7 }, { L"3E", 3 }, { L"5.5.5", 5.5 }, { L"1e2x", 100 }, { L"\t4", 0 } })
        EXPECT_DOUBLE_EQ(leadingNumber(text), value) << narrow(text);
}

TEST(Conversions, HugeNumbersStayInRange)
{
    EXPECT_EQ(roundToWhole(leadingNumber(L"1E999")), std::numeric_limits<long long>::max());
    EXPECT_EQ(roundToWhole(leadingNumber(L"-1E999")), std::numeric_limits<long long>::min());
    EXPECT_EQ(leadingNumber(L"1E-999"), 0);
    // With many digits the exponent alone does not decide.
    const Text zeros(400, L'0');
    EXPECT_EQ(leadingNumber(L"0." + zeros + L"1"), 0);
    EXPECT_EQ(leadingNumber(L"0." + zeros + L"1E5"), 0);
    EXPECT_DOUBLE_EQ(leadingNumber(L"0." + zeros + L"1E401"), 1);
    EXPECT_EQ(leadingNumber(L"1" + zeros + L"E-5"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(leadingNumber(L"-1E99999999999999999999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(leadingNumber(L"1E-99999999999999999999"), 0);
}

TEST(Conversions, HalvesAreRoundedToEven)
{
    for (const auto& [value, whole] : { std::pair<double, long long> { 0.5, 0 }, { 1.5, 2 }, { 2.5, 2 }, { -0.5, 0 },
             { -1.5, -2 }, { -2.5, -2 }, { 2.4999, 2 }, { -0.2, 0 }, { -0.6, -1 }, { 1e18, 1000000000000000000 } })
        EXPECT_EQ(roundToWhole(value), whole) << value;
}

TEST(Conversions, DoNotDependOnTheLocale)
{
    // de_DE has a decimal comma, but not every machine has de_DE.
    for (const char* locale : { "de_DE.UTF-8", "C.UTF-8", "C" }) {
        std::setlocale(LC_ALL, locale);
        EXPECT_DOUBLE_EQ(leadingNumber(L"1.5"), 1.5) << locale;
        EXPECT_EQ(properCase(L"MUÑOZ"), L"Muñoz") << locale;
    }
}

TEST(Letters, ProperCase)
{
    for (const auto& [text, expected] : { std::pair<TextView, TextView> { L"NEEDS HELP", L"Needs Help" },
             { L"NON-EMERGENT", L"Non-emergent" }, { L"mcDONALD", L"Mcdonald" }, { L"O'BRIEN", L"O'brien" },
             { L"", L"" }, { L"  TWO  BLANKS", L"  Two  Blanks" }, { L"ÉTIENNE ÇELIK ØRSTED", L"Étienne Çelik Ørsted" },
             { L"ЖАННА ΣΟΦΙΑ", L"Жанна Σοφια" }, { L"SMITH,JOHN", L"Smith,john" }, { L"\tTAB", L"\ttab" } })
        EXPECT_EQ(properCase(text), expected);
    EXPECT_EQ(properCase(L"SMITH,JOHN Q", WordStart::AfterBlankOrComma), L"Smith,John Q");
    EXPECT_EQ(properCase(L"SMITH, JOHN", WordStart::AfterBlankOrComma), L"Smith, John");
}

TEST(Letters, ComparisonIgnoresCase)
{
    EXPECT_TRUE(equalIgnoringCase(L"Muñoz", L"MUÑOZ"));
    EXPECT_FALSE(equalIgnoringCase(L"Munoz", L"MUÑOZ"));
    EXPECT_FALSE(equalIgnoringCase(L"AB", L"ABC"));
}

TEST(Texts, InvalidUtf8BecomesReplacementCharacters)
{
    for (const auto& [bytes, text] : { std::pair<std::string_view, TextView> { "caf\xC3\xA9", L"café" },
             { "a\xFFz", L"a\xFFFDz" }, { "\xC3", L"\xFFFD" }, { "\xC0\x80", L"\xFFFD\xFFFD" },
             { "\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD" }, { "\xF0\x9F\x98\x80!", L"\x1F600!" },
             { "\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD" }, { "\xEF\xBF\xBD", L"\xFFFD" } })
        EXPECT_EQ(widen(bytes), text) << bytes;
    EXPECT_EQ(narrow(L"ñ€\x1F600"), "\xC3\xB1\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(narrow(Text(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
}

}
