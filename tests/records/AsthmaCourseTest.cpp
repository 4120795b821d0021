#include "records/AsthmaCourse.h"

#include "tests/support/MadeRecords.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

using enum RecordDate::Precision;

TEST(RecordDate, KeepsItsPrecision)
{
    struct Case {
        TextView sent;
        TextView shown;
    };
    for (const Case& date : { Case { L"3260318.085", L"03/18/2026 08:50" }, Case { L"3260318.1", L"03/18/2026 10:00" },
             Case { L"3260318", L"03/18/2026" }, Case { L"3260300", L"03/2026" }, Case { L"3260000", L"2026" },
             Case { L"03/18/2026@08:50", L"03/18/2026 08:50" }, Case { L"03/18/2026", L"03/18/2026" },
             Case { L"3260318.24", L"03/19/2026 00:00" } }) {
        const auto read = readRecordDate(date.sent);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->text(), date.shown);
    }
    for (const TextView bad :
        { L"", L"3260230", L"3261318", L"3260018", L"326031", L"3260318.2575", L"3260318.08x", L"soon", L"02/30/2026" })
        EXPECT_FALSE(readRecordDate(bad)) << Text(bad).size();
    EXPECT_LT(readRecordDate(L"3260300")->start, readRecordDate(L"3260302")->start);
}

TEST(AsthmaCourse, IsInTheOrderOfTimeAndInventsNothing)
{
    const auto records = madeRecords(RecordTypeNumber::Asthma,
        { L"9^^3260615.1|7^MILD PERSISTENT|2^84^^385", L"8^^3261121.0815|8^MILD INTERMITTENT|1^93^4x^1e9",
            L"7^^|9^SEVERE PERSISTENT|4^1^2^3", L"6^^3260615.1|7^MODERATE PERSISTENT^61^95^", L"5^^3250900|6^" });
    const AsthmaCourse course = asthmaCourse(records);
    ASSERT_EQ(course.readings.size(), 4u); // two of one moment stay two
    EXPECT_EQ(course.readings[0].record, 4u);
    EXPECT_EQ(course.readings[1].record, 0u);
    EXPECT_EQ(course.readings[2].record, 3u);
    EXPECT_EQ(course.readings[2].level, 3); // by the words, without a code
    EXPECT_EQ(course.readings[3].lung, (std::array<std::optional<double>, 3> { 93, std::nullopt, std::nullopt }));
    const CourseTable table = asthmaTable(course, std::nullopt);
    ASSERT_EQ(table.rows.size(), 5u);
    EXPECT_EQ(table.rows[0], (std::vector<Text> { L"09/2025", L"", L"", L"", L"" }));
    EXPECT_EQ(table.rows[3], (std::vector<Text> { L"11/21/2026 08:15", L"93", L"4x", L"1e9", L"Mild Intermittent" }));
    EXPECT_EQ(table.rows[4].front(), L""); // no readable date
    for (const auto& row : table.rows)
        EXPECT_EQ(row.size(), table.headings.size());
}

TEST(AsthmaCourse, RunsEndAtGaps)
{
    const auto records = madeRecords(RecordTypeNumber::Asthma,
        { L"1^^3260101^MILD PERSISTENT|2^70", L"2^^3260102^MILD PERSISTENT|2^71", L"3^^3260103^ODD^",
            L"4^^3260104^|2^73", L"5^^3260105^SEVERE PERSISTENT|4^70.5" });
    const auto readings = asthmaCourse(records).readings;
    const auto runs = severityRuns(readings);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[0].last, 1u);
    EXPECT_EQ(runs[1].first, 3u); // the unknown severity is no bridge
    EXPECT_EQ(runs[2].level, 4);
    using Runs = std::vector<std::pair<std::size_t, std::size_t>>;
    EXPECT_EQ(lungRuns(readings, 0), (Runs { { 0, 1 }, { 3, 4 } }));
    EXPECT_EQ(lungRuns(readings, 1), Runs {});
    EXPECT_EQ(lungChange(readings, 0, 0), L"");
    EXPECT_EQ(lungChange(readings, 1, 0), L"+1");
    EXPECT_EQ(lungChange(readings, 3, 0), L""); // not across the gap
    EXPECT_EQ(lungChange(readings, 4, 0), L"\u22122.5");
    const auto same = madeRecords(RecordTypeNumber::Asthma, { L"1^^3260101^^70", L"2^^3260101.08^^75" });
    EXPECT_EQ(lungChange(asthmaCourse(same).readings, 1, 0), L""); // which came first is not certain
}

TEST(AsthmaCourse, SaysHowFarTheDueDateIs)
{
    const Moment now = momentOf(2026, 11, 21, 23, 50);
    EXPECT_EQ(dueDistance(L"01/10/2027", now)->words, L"in 50 days");
    EXPECT_EQ(dueDistance(L"3261122", now)->words, L"in 1 day");
    EXPECT_EQ(dueDistance(L"11/21/2026", now)->words, L"today");
    EXPECT_FALSE(dueDistance(L"11/21/2026", now)->isOver);
    EXPECT_EQ(dueDistance(L"11/01/2026", now)->words, L"20 days over");
    EXPECT_TRUE(dueDistance(L"11/20/2026", now)->isOver);
    for (const TextView none : { L"", L"next year", L"3270100" }) // a month has no days to count
        EXPECT_FALSE(dueDistance(none, now));
    EXPECT_EQ(asthmaTable({}, dueDistance(L"01/10/2027", now)).title,
        L"Asthma Status. Calculated Date Due 01/10/2027, in 50 days");
}

}
}
