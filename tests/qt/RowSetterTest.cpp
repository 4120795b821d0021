#include "qt/RowSetter.h"

#include "control/RecordTypes.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace health::test {
namespace {

class RowSetterTest : public testing::Test {
protected:
    RowSetterTest() { setter.setFont(QApplication::font()); }

    // A functional status with a date.
    void fill(TextView date, TextView bathing)
    {
        line = L"1^^" + Text(date) + L"^INDEPENDENT^" + Text(bathing) + L"^NEEDS HELP^INDEPENDENT";
        summary = (date.empty() ? L"" : L"03/10/2026 09:30: ") + (L"Toileting=Independent; Bathing=" + Text(bathing))
            + L"; Dressing=Needs Help; Transfers=Independent";
        ListedRecord record;
        record.type = &recordType(RecordTypeNumber::FunctionalStatus);
        record.line = line;
        record.summary = summary;
        runs = typeset(record);
    }

    // The lines' texts and where they begin; the first line begins after the date.
    struct Line {
        Text text;
        int left = 0;
    };
    std::vector<Line> set(int width, int narrow = 0)
    {
        std::vector<Line> lines;
        std::size_t end = 0;
        for (const RowPiece& piece : setter.set(runs, width, narrow).pieces) {
            EXPECT_EQ(piece.start, end); // no letter is lost
            end += piece.length;
            EXPECT_TRUE(
                piece.line == static_cast<int>(lines.size()) || piece.line + 1 == static_cast<int>(lines.size()));
            if (piece.line == static_cast<int>(lines.size()))
                lines.push_back({ {}, piece.left });
            lines.back().text += summary.substr(piece.start, piece.length);
            EXPECT_LE(piece.left, width);
        }
        EXPECT_EQ(end, summary.size());
        return lines;
    }

    int width(TextView text) { return setter.widthOf(text, RowStyle::Strong); }

    RowSetter setter;
    Text line;
    Text summary;
    std::vector<SummaryRun> runs;
};

TEST_F(RowSetterTest, LinesBreakAfterAFieldOnly)
{
    fill(L"3260310.0930", L"Independent");
    EXPECT_EQ(set(width(summary) * 2).size(), 1u);
    const auto lines = set(width(L"03/10/2026 09:30:    Toileting=Independent; Bathing=Independent;"));
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].text, L"03/10/2026 09:30: Toileting=Independent; Bathing=Independent; ");
    EXPECT_EQ(lines[1].text, L"Dressing=Needs Help; Transfers=Independent");
    EXPECT_GT(lines[1].left, width(L"03/10/2026 09:30")); // below the first field
}

TEST_F(RowSetterTest, NarrowLinesContinueBelowTheDate)
{
    fill(L"3260310.0930", L"Independent");
    const int room = width(L"03/10/2026 09:30:    Toileting=Independent;");
    const auto lines = set(room, room + 1);
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[1].left, 0);
    EXPECT_EQ(lines[1].text, L"Bathing=Independent; Dressing=Needs Help; ");
}

TEST_F(RowSetterTest, ARowWithoutADateBeginsInTheDatesColumn)
{
    fill(L"", L"Independent");
    EXPECT_EQ(set(1000)[0].left, 0);
}

TEST_F(RowSetterTest, AFieldThatIsLongerThanALineBreaksBetweenWords)
{
    fill(L"3260310.0930", L"word word word word word word word word word word word word word word word word");
    const int room = width(L"03/10/2026 09:30:    Toileting=Independent; Bath");
    auto lines = set(room);
    ASSERT_GE(lines.size(), 3u);
    EXPECT_TRUE(lines[1].text.ends_with(L"word ")) << std::string(lines[1].text.begin(), lines[1].text.end());
    EXPECT_EQ(lines[1].left, lines[2].left);
    fill(L"3260310.0930", Text(200, L'w')); // and a word within itself
    EXPECT_GE(set(room).size(), 5u);
    EXPECT_GE(set(1).size(), 100u); // at least a letter in each line
}

}
}
