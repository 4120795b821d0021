#include "text/DateWords.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health {

const Moment Now = momentOf(2026, 11, 21, 14, 32, 7); // a Saturday

TEST(DateWords, DistanceFromToday)
{
    for (const auto& [date, expected] :
        { std::pair<TextView, TextView> { L"11/21/2026", L"today" }, { L"11/20/2026", L"yesterday" },
            { L"11/22/2026", L"tomorrow" }, { L"11/19/2026", L"2 days ago" }, { L"12/04/2026", L"in 13 days" },
            { L"11/07/2026", L"2 weeks ago" }, { L"10/06/2026", L"6 weeks ago" }, { L"07/24/2026", L"17 weeks ago" },
            { L"04/30/2027", L"in 22 weeks" }, { L"05/24/2026", L"25 weeks ago" }, { L"05/23/2026", L"6 months ago" },
            { L"01/25/2026", L"10 months ago" }, { L"12/25/2024", L"23 months ago" }, { L"11/21/2024", L"2 years ago" },
            { L"11/21/2028", L"in 2 years" }, { L"01/01/1986", L"40 years ago" } })
        EXPECT_EQ(distanceName(*parseDate(date), Now), expected) << narrow(date);
    EXPECT_EQ(dateWords(momentOf(2026, 7, 24), Now, TimePart::Without), L"Fri Jul 24, 2026 \u00B7 17 weeks ago");
    EXPECT_EQ(
        dateWords(momentOf(2026, 11, 20, 22, 45), Now, TimePart::With), L"Fri Nov 20, 2026 \u00B7 yesterday, 22:45");
    EXPECT_EQ(fullDayName(momentOf(2026, 7, 24)), L"Friday, July 24, 2026");
    EXPECT_EQ(counted(1, L"day") + counted(0, L"day"), L"1 day0 days");
}

TEST(DateWords, AllowedRange)
{
    const Moment early = momentOf(2025, 11, 22);
    const Moment late = momentOf(2027, 8, 18);
    for (const auto& [range, words] : { std::pair<DateRange, TextView> { { {}, {} }, L"" },
             { { {}, Now }, L"allowed: up to today" }, { { early, {} }, L"allowed: from 11/22/2025" },
             { { early, Now }, L"allowed: 11/22/2025 to today" }, { { Now, late }, L"allowed: today to 08/18/2027" } })
        EXPECT_EQ(rangeWords(range, Now), words);
}

TEST(DateEntries, WeekdayIsTheNearestAllowedDay)
{
    const DateRange past { {}, Now };
    const DateRange future { Now, momentOf(2027, 8, 18) };
    const DateRange lastWeek { momentOf(2026, 11, 10), momentOf(2026, 11, 14) }; // ends on a Saturday
    for (const auto& [text, range, expected] :
        { std::tuple<TextView, DateRange, TextView> { L"sat", past, L"11/21/2026" }, { L"sat", future, L"11/21/2026" },
            { L"SUN", past, L"11/15/2026" }, { L"Sunday", future, L"11/22/2026" }, { L"fri", {}, L"11/20/2026" },
            { L"friday", future, L"11/27/2026" }, { L"mon", lastWeek, L"11/16/2026" },
            { L"wed", { Now, momentOf(2026, 11, 25) }, L"11/25/2026" } }) {
        const auto moment = momentEntered(text, Now, range);
        ASSERT_TRUE(moment) << narrow(text);
        EXPECT_EQ(defaultDateText(*moment), expected) << narrow(text);
    }
}

TEST(DateEntries, UnfinishedTextsAndHopelessOnes)
{
    for (const TextView begun :
        { L"", L"1", L"1/", L"02/3", L"02/29/19", L"0102", L"0102202", L"J", L"SEPT", L"feb 29,", L"T+", L"-", L"y",
            L"tom", L"we", L"no", L"1/2/2006 1", L"1/2/2006@14:", L"T 2:30 p", L"fri 1" })
        EXPECT_TRUE(isDateBegun(begun, Now)) << narrow(begun);
    for (const TextView hopeless : { L"abc", L"13/", L"2/30/", L"02/30/2026", L"13/1/2026", L"1301", L"1//", L"+-",
             L"T-3X", L"frx", L"feb 30", L"1/2/2006 25", L"1/2/2006x", L"0/" })
        EXPECT_FALSE(isDateBegun(hopeless, Now)) << narrow(hopeless);
}

}
