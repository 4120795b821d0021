#include "records/RecordFilter.h"

#include "tests/support/ControlFixture.h"

namespace health::test {
namespace {

Text marked(TextView text, TextView words)
{
    Text result(text);
    const auto ranges = occurrences(text, foldedWords(words));
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
        result.insert(range->end(), L"]");
        result.insert(range->start, L"[");
    }
    return result;
}

TEST(FoldedLetters, CaseAndAccentsDoNotMatter)
{
    EXPECT_EQ(folded(L"Müller ŁUKASZ İnci ẞtraße Œuvre Ơn ĐẶNG Ærø Þór"),
        L"muller lukasz inci sstrasse oeuvre on dang aero thor");
    EXPECT_EQ(folded(L"e\u0301 E\u0323\u0302x\u00AD"), L"e ex"); // combining marks, a soft hyphen
    EXPECT_EQ(folded(L"ÖÐŻ×÷ɐ ЖУК"), L"odz×÷ɐ жук");
    EXPECT_EQ(folded(L"won\u2019t\u00A0eat \u2013"), L"won't eat -");
    EXPECT_EQ(foldedWords(L"  Two\twörds "), (std::vector<Text> { L"two", L"words" }));
    EXPECT_TRUE(foldedWords(L" \u0301 ").empty());
}

TEST(FoldedLetters, MarksWholeLettersOfTheOriginal)
{
    EXPECT_EQ(marked(L"Tetanus-DIPHTHERIA, ask her; Her", L"her"), L"Tetanus-DIPHT[HER]IA, ask [her]; [Her]");
    EXPECT_EQ(marked(L"Straße", L"s"), L"[S]tra[ß]e");
    EXPECT_EQ(marked(L"Straße", L"sse"), L"Stra[ße]");
    EXPECT_EQ(marked(L"Straße", L"as"), L"Str[aß]e"); // half of a pair
    EXPECT_EQ(marked(L"Cafe\u0301 e\u0301t", L"e"), L"Caf[e\u0301] [e\u0301]t");
    EXPECT_EQ(marked(L"banana", L"ana nan"), L"b[anana]"); // overlapping
    EXPECT_EQ(marked(L"aaaa", L"aa"), L"[aaaa]");
    EXPECT_EQ(marked(L"none", L"x"), L"none");
    EXPECT_EQ(marked(L"", L"x"), L"");
}

class RecordFilterTest : public ControlFixture {
protected:
    void SetUp() override
    {
        reply(L"MEVREP GET", L"G3P2^^PILL");
        reply(L"MEVVAST GET", L"1^^3260310.09|81^MILD\r\n2^^3260310.1|81^SEVERE\r\n3^^3260310|80^MODERATE\r\n");
        reply(L"MEVVTXC GET", L"4^^01/05/2026@10:00|81^PAIN^^ÅKERLUND,ZOË\r\n5^^|81^PAIN\r\n");
        reply(L"MEVREF GET",
            L"6^^^EXAM^14^FOOT^^^3250000^^^her sister\r\n7^^^EXAM^14^EYE^^^3251200^^^\r\n8^^^EXAM^14^EYE^^^soon^^^\r\n"
            L"9^^^EXAM^14^EYE^^^3260311^^^\r\n");
        open(12);
        records = listedRecords(control);
        finder.read(records);
    }

    // The records' numbers in the order found; 12 is the reproductive history's.
    Text find(const RecordFilter& filter, RecordOrder order = RecordOrder::AsLoaded)
    {
        found = finder.find(filter, order);
        Text numbers;
        for (const int row : found.rows)
            numbers += Text(records.at(static_cast<std::size_t>(row)).record) + L' ';
        return numbers;
    }

    std::vector<ListedRecord> records;
    RecordFinder finder;
    FoundRecords found;
};

TEST_F(RecordFilterTest, AllWordsMustOccurInLabelOrSummary)
{
    EXPECT_EQ(find({}), L"12 1 2 3 4 5 6 7 8 9 ");
    EXPECT_EQ(find({ .words = L" " }), L"12 1 2 3 4 5 6 7 8 9 ");
    EXPECT_EQ(find({ .words = L"asthma" }), L"1 2 3 ");
    EXPECT_EQ(find({ .words = L"severe ASTH" }), L"2 ");
    EXPECT_EQ(find({ .words = L"ake zoe" }), L"4 ");
    EXPECT_EQ(find({ .words = L"Åke zoë" }), L"4 ");
    EXPECT_EQ(find({ .words = L"refusal her" }), L"6 ");
    EXPECT_EQ(find({ .words = L"status03" }), L""); // label and summary are two texts
    EXPECT_EQ(find({ .words = L"asthma pain" }), L"");
}

TEST_F(RecordFilterTest, KindsAndYearsLimitAndAreCounted)
{
    EXPECT_EQ(find({ .kinds = { RecordTypeNumber::Asthma, RecordTypeNumber::Refusal } }), L"1 2 3 6 7 8 9 ");
    EXPECT_EQ(found.counts.at(RecordTypeNumber::TreatmentContract), 2); // as if no kind were chosen
    EXPECT_EQ(find({ .words = L"pain", .kinds = { RecordTypeNumber::Asthma } }), L"");
    EXPECT_EQ(found.counts, (std::map<RecordTypeNumber, int> { { RecordTypeNumber::TreatmentContract, 2 } }));
    EXPECT_EQ(finder.years(), (std::vector { 2026, 2025 }));
    EXPECT_EQ(find({ .year = 2025 }), L"6 7 "); // also a date that is only a year
    EXPECT_EQ(found.undated, 3); // no date, an empty one, an unreadable one
    EXPECT_EQ(find({ .words = L"pain", .kinds = { RecordTypeNumber::Asthma }, .year = 2025 }), L"");
    EXPECT_EQ(found.undated, 0);
}

TEST_F(RecordFilterTest, OrdersByDateWithItsPrecision)
{
    EXPECT_EQ(find({}, RecordOrder::NewestFirst), L"9 2 1 3 4 7 6 12 5 8 ");
    EXPECT_EQ(find({}, RecordOrder::ByKind), L"12 2 1 3 4 5 9 7 6 8 ");
    EXPECT_EQ(find({ .words = L"eye" }, RecordOrder::NewestFirst), L"9 7 8 ");
}

TEST_F(RecordFilterTest, ReadsMomentsInBothForms)
{
    EXPECT_EQ(recordMoment(records[1]), 20260310090000);
    EXPECT_EQ(recordMoment(records[4]), 20260105100000);
    EXPECT_EQ(recordMoment(records[6]), 20250000000000);
    EXPECT_EQ(recordMoment(records[5]), std::nullopt);
    EXPECT_EQ(recordMoment(records[8]), std::nullopt);
}

TEST_F(RecordFilterTest, ReadsTheListAgainAfterAReload)
{
    EXPECT_EQ(find({ .words = L"mild" }), L"1 ");
    reply(L"MEVVAST GET", L"1^^3230310|81^SEVERE\r\n");
    push(L"REFRESH");
    records = listedRecords(control);
    finder.read(records);
    EXPECT_EQ(find({ .words = L"mild" }), L"");
    EXPECT_EQ(find({ .words = L"severe", .year = 2023 }), L"1 ");
}

}
}
