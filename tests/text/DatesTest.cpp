#include "text/Dates.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health {

TEST(Dates, AcceptedTexts)
{
    for (const auto& [text, expected] : { std::pair<TextView, TextView> { L"12/31/2020", L"12/31/2020 00:00" },
             { L"1/2/2006", L"01/02/2006 00:00" }, { L"01/02/06", L"01/02/2006 00:00" },
             { L"1/2/29", L"01/02/2029 00:00" }, { L"1/2/30", L"01/02/1930 00:00" },
             { L" 02/29/2024 ", L"02/29/2024 00:00" }, { L"12/31/2020 14:30", L"12/31/2020 14:30" },
             { L"12/31/2020 14:30:59", L"12/31/2020 14:30" }, { L"12/31/2020 2:30 PM", L"12/31/2020 14:30" },
             { L"12/31/2020 12:05 am", L"12/31/2020 00:05" }, { L"12/31/2020 12:05PM", L"12/31/2020 12:05" },
             { L"JAN 2, 2006", L"01/02/2006 00:00" }, { L"jan 2,2006 14:30", L"01/02/2006 14:30" },
             { L"September 9 2021", L"09/09/2021 00:00" }, { L"1/1/0100", L"01/01/0100 00:00" } }) {
        const auto moment = parseDate(text);
        ASSERT_TRUE(moment) << narrow(text);
        EXPECT_EQ(dateTimeText(*moment), expected) << narrow(text);
    }
}

TEST(Dates, NearMisses)
{
    for (const TextView text : { L"", L" ", L"3201231", L"3201231.143", L"02/30/2020", L"02/29/2023", L"13/01/2020",
             L"0/1/2020", L"1/0/2020", L"1/2/6", L"1/2/206", L"1/2/20060", L"1/2", L"12/31/2020 24:00",
             L"12/31/2020 14:60", L"12/31/2020 14", L"12/31/2020@14:30", L"12/31/2020 13:00 PM", L"12/31/2020 1:00 XM",
             L"12/31/2020x", L"JAN 2006", L"JAN32,2006", L"JANU 2, 2006", L"JAN 22006", L"word", L"14:30",
             L"12/31/2020 14:30 junk", L"12/31/2020 0:30 AM", L"12/31/2020 14:30:60", L"12/31/0099" })
        EXPECT_FALSE(isDate(text)) << narrow(text);
}

TEST(Dates, FieldsOutOfRangeRollOver)
{
    EXPECT_EQ(dateText(momentOf(2020, 13, 1)), L"01/01/2021");
    EXPECT_EQ(dateText(momentOf(2020, 0, 1)), L"12/01/2019");
    EXPECT_EQ(dateText(momentOf(2020, -12, 1)), L"12/01/2018");
    EXPECT_EQ(dateText(momentOf(2020, 3, 0)), L"02/29/2020");
    EXPECT_EQ(dateTimeText(momentOf(2020, 12, 31, 24)), L"01/01/2021 00:00");
    EXPECT_EQ(dateTimeText(momentOf(2020, 1, 1, 0, 61, 0)), L"01/01/2020 01:01");
}

}
