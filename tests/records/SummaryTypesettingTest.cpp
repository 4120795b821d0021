#include "records/SummaryTypesetting.h"

#include "tests/support/ControlFixture.h"
#include "text/Letters.h"

#include <random>

namespace health::test {
namespace {

class SummaryTypesettingTest : public ControlFixture {
protected:
    // The runs of a row, "|" between them, each after the letter of its part; changed values after "V!".
    Text runsOf(std::size_t row, const ListedRecord* earlier = nullptr)
    {
        Text text;
        for (const SummaryRun& run : typeset(listedRecords(control).at(row), earlier))
            text += Text(text.empty() ? L"" : L"|") + TextView(L"DT:C=V;")[static_cast<std::size_t>(run.part)]
                + (run.isChanged ? L"!" : L" ") + Text(run.text);
        return text;
    }
};

TEST_F(SummaryTypesettingTest, EachKindHasItsRuns)
{
    reply(L"MEVREP GET", L"g3P1^3260724|1^NONE^^SONOGRAM^3270430");
    reply(L"MEVBMSR GET", L"7^1^3; 2^3230^^^^^^2^6M");
    reply(L"MEVVIF GET", L"5^^3260310.0930|81^MOSTLY BREAST\r\n6^^^MIXED\r\n");
    reply(L"MEVVAST GET", L"5^^3260310.0930|81^MILD; FEV=1^90\r\n");
    reply(L"MEVVTXC GET", L"5^^^PAIN; Provider=X^3260318^A,B\r\n");
    reply(L"MEVREF GET",
        L"1^^^EXAM^^^^^3260922^^^says; Comment=no = no\r\n2^^^IMMUNIZATION^^DT; "
        L"X^^^3260922\r\n3^^^EXAM^^EXAM^^^^^^x\r\n"
        L"4^^^^^^^^^^^only\r\n");
    open(12, L"F", L"4");
    const Transcript expected {
        L"V G3P1|; ; |C LMP|= =|V 3260724|; ; |C Contraceptive Method|= =|V None|; ; |C Pregnant: "
        L"Est. Delivery|= =|V 3270430|; ; |C Determined by|= =|V Sonogram",
        L"C Birth Weight|= =|V 7 lbs 1 oz (3; 2 kgs) |; ; |C Birth Order|= =|V 2|; ; |C Formula Started|= =|V 6m",
        L"D 03/10/2026|T  09:30|: : |V Mostly Breast", L"V Mixed",
        L"D 03/10/2026|T  09:30|: : |C Severity|= =|V Mild; Fev=1|; ; |C FEV|= =|V 90",
        L"C Initiated|= =|V 3260318|; ; |C Type|= =|V Pain; Provider=x|; ; |C Provider|= =|V A,B",
        L"D 09/22/2026|: : |V EXAM|; ; |C Comment|= =|V says; Comment=no = no",
        L"D 09/22/2026|: : |V DT; X (Immunization)", L"V EXAM|; ; |C Comment|= =|V x", L"C Comment|= =|V only"
    };
    ASSERT_EQ(listedRecords(control).size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row)
        EXPECT_EQ(runsOf(row), expected[row]);
}

// Whatever the server sends, the runs are the summary, and there is a caption for each field with a value.
TEST_F(SummaryTypesettingTest, RunsJoinedAreTheSummary)
{
    std::mt19937 random(13); // NOLINT: the same rows in each run
    const std::vector<Text> values { L"", L"; ", L"=", L"Severity=", L"; FEV=2", L"03/10/2026: ", L"3260310.1|81",
        L"|1", L" ", L"\u00DF\u0130x", L"\U0001F600", L"1", L"NEEDS HELP", L"3260310" };
    for (const TextView call : { L"MEVREP GET", L"MEVBMSR GET", L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET",
             L"MEVVTXC GET", L"MEVREF GET" }) {
        Text lines;
        const int count = call == L"MEVREP GET" || call == L"MEVBMSR GET" ? 1 : 200;
        for (int i = 0; i < count; ++i) {
            for (int piece = 0; piece < 18; ++piece)
                lines += values[random() % values.size()] + values[random() % values.size()] + L"^";
            lines += count == 1 ? L"" : L"\r\n";
        }
        reply(call, lines);
    }
    open(12, L"F", L"4");
    const auto records = listedRecords(control);
    ASSERT_EQ(records.size(), 1002u);
    for (const ListedRecord& record : records) {
        Text joined;
        std::ptrdiff_t captions = 0;
        for (const SummaryRun& run : typeset(record)) {
            EXPECT_FALSE(run.text.empty());
            joined += run.text;
            captions += run.part == SummaryPart::Caption;
        }
        EXPECT_EQ(joined, record.summary);
        const LinePieces pieces(record.line);
        std::ptrdiff_t known = record.type->number == RecordTypeNumber::BirthMeasurements;
        if (record.type->number == RecordTypeNumber::Refusal)
            known = !displayPart(pieces[12]).empty();
        for (const SummaryField& field : record.type->fields)
            known += !field.caption.empty() && !displayPart(pieces[field.piece]).empty();
        EXPECT_EQ(captions, known) << std::string(record.summary.begin(), record.summary.end());
    }
}

TEST_F(SummaryTypesettingTest, ValuesThatDifferFromTheRecordBeforeAreChanged)
{
    reply(L"MEVVELD GET",
        L"9^^3260310|81^NEEDS HELP^INDEPENDENT\r\n8^^3260510|82^NEEDS HELP^NEEDS HELP^INDEPENDENT\r\n"
        L"7^^|83^X\r\n6^^3260310.08|84^TOTALLY DEPENDENT\r\n5^^3260310.08|85^INDEPENDENT\r\n");
    open(10);
    const auto records = listedRecords(control);
    const auto earlier = earlierRecords(records, RecordTypeNumber::FunctionalStatus);
    EXPECT_EQ(earlier, (std::vector { -1, 3, -1, -1, -1 })); // the order of the others is not certain
    EXPECT_EQ(runsOf(1, &records[0]),
        L"D 05/10/2026|: : |C Toileting|= =|V Needs Help|; ; |C Bathing|= =|V!Needs Help|; ; |C Dressing|= =|V "
        L"Independent"); // nothing is known of the earlier dressing
}

}
}
