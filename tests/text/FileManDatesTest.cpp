#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health::test {

TEST(FileManDates, ToDisplay)
{
    const std::tuple<TextView, TextView, TextView> cases[] = { { L"3201231.143", L"12/31/2020", L"12/31/2020 14:30" },
        { L"3201231", L"12/31/2020", L"12/31/2020 00:00" }, { L"3201231.235959", L"12/31/2020", L"12/31/2020 23:59" },
        { L"3201231.24", L"01/01/2021", L"01/01/2021 00:00" }, { L"3200100", L"12/31/2019", L"12/31/2019 00:00" },
        { L"3200000", L"11/30/2019", L"11/30/2019 00:00" },
        { L"3201231.1429599999", L"12/31/2020", L"12/31/2020 14:30" }, // the 14 digits are rounded: second 60
        { L" 3201231 ", L"12/31/2020", L"12/31/2020 00:00" },
        { L"12/31/2020@14:30", L"12/31/2020", L"12/31/2020 14:30" },
        { L"JAN 2,2006@09:05", L"01/02/2006", L"01/02/2006 09:05" },
        { L"1/2/2006", L"01/02/2006", L"01/02/2006 00:00" }, { L"", L"", L"" }, { L"no date", L"", L"" },
        { L"02/30/2020", L"", L"" }, { L"82991231", L"12/31/9999", L"12/31/9999 00:00" }, { L"82991232", L"", L"" },
        { L"82999999.99", L"", L"" }, { L"99999999999", L"", L"" }, { L"-99999999", L"", L"" },
        { L"-15999899", L"", L"" } }; // the year 100 has no fourteen digits
    for (const auto& [text, date, dateTime] : cases) {
        EXPECT_EQ(FMDateToDate(text, TimePart::Without), date) << narrow(text);
        EXPECT_EQ(FMDateToDate(text, TimePart::With), dateTime) << narrow(text);
    }
}

TEST(FileManDates, DisplayTextHasTheTimeIfTheDateHasOne)
{
    for (const auto& [text, expected] : { std::pair<TextView, TextView> { L"3201231", L"12/31/2020" },
             { L"3201231.1", L"12/31/2020 10:00" }, { L"12/31/2020", L"12/31/2020" },
             { L"12/31/2020@07:15", L"12/31/2020 07:15" }, { L"12/31/2020 07:15", L"12/31/2020 07:15" } })
        EXPECT_EQ(fmDateToDisplay(text), expected) << narrow(text);
}

TEST(FileManDates, FromDateText)
{
    ScriptedHost host;
    modShared shared(host.desktop);
    for (const auto& [text, timePart, expected] :
        { std::tuple<TextView, TimePart, TextView> { L"12/31/2020", TimePart::Without, L"3201231" },
            { L"12/31/2020 14:30:00", TimePart::With, L"3201231.143" },
            { L"12/31/2020 14:30", TimePart::Without, L"3201231" },
            { L"12/31/2020 00:00:00", TimePart::With, L"3201231" },
            { L"12/31/2020 10:00", TimePart::With, L"3201231.1" },
            { L"12/31/2020 00:05", TimePart::With, L"3201231.0005" },
            { L"12/31/2020 09:05:07", TimePart::With, L"3201231.090507" }, { L"1/1/1701", TimePart::Without, L"10101" },
            { L"12/31/1700", TimePart::Without, L"" }, { L"", TimePart::With, L"" } })
        EXPECT_EQ(shared.DateToFMDate(text, timePart), expected) << narrow(text);
    EXPECT_TRUE(host.boxes().empty());

    EXPECT_EQ(shared.DateToFMDate(L"soon", TimePart::Without), L"");
    EXPECT_BOXES(L"box [System Error] Error in module modShared at DateToFMDate\r\n\r\n\"soon\" is not a date.");
}

}
