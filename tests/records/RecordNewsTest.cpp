#include "records/RecordNews.h"

#include "tests/support/ControlFixture.h"

namespace health::test {
namespace {

class RecordNewsTest : public ControlFixture {
protected:
    // Contracts and refusals as "key text", such as "8 PAIN"; an empty text makes the row's type unreadable.
    void load(long patient, const std::vector<Text>& contracts, const std::vector<Text>& refusals = { L"1 EXAM" },
        const std::vector<const RecordType*>& unread = {})
    {
        Text lines;
        for (const Text& contract : contracts)
            lines += Piece(contract, L" ", 1) + L"^^^" + Piece(contract, L" ", 2) + L"\r\n";
        reply(L"MEVVTXC GET", lines);
        lines.clear();
        for (const Text& refusal : refusals)
            lines += Piece(refusal, L" ", 1) + L"^^^" + Piece(refusal, L" ", 2) + L"^^^^^3260922\r\n";
        reply(L"MEVREF GET", lines);
        if (control.recordLines().count() == 0)
            open(patient, L"M");
        else
            commitPatient(patient, L"M");
        news.show(patient, listedRecords(control), unread);
    }

    // A letter for each row, "N", "C" or "-", and before the row in whose place they stood those that are gone.
    Text marks()
    {
        Text text;
        const auto gone = news.gone();
        for (int row = 0; row <= control.fgData.rowCount(); ++row) {
            for (const RecordNews::Gone& record : gone)
                text += record.before == row ? L"[" + record.name + L"]" : Text();
            if (row < control.fgData.rowCount())
                text += TextView(L"-NC")[static_cast<std::size_t>(news.mark(row))];
        }
        return text;
    }

    RecordNews news;
};

TEST_F(RecordNewsTest, MarksWhatDiffersFromWhatWasSeen)
{
    load(7, { L"8 PAIN", L"9 X" });
    EXPECT_EQ(marks(), L"---");
    load(7, { L"10 NEW", L"8 OTHER", L"9 X" }, {});
    EXPECT_EQ(marks(), L"NC-[Refusal 09/22/2026]");
    load(7, { L"11 NEWER", L"10 NEW", L"8 OTHER" }, {}); // marks stay until they are seen
    EXPECT_EQ(marks(), L"NNC[Tx Contract][Refusal 09/22/2026]");
    news.see(0);
    EXPECT_EQ(marks(), L"-NC[Tx Contract][Refusal 09/22/2026]");
    news.see(2);
    EXPECT_EQ(marks(), L"-N-");
    load(7, { L"11 NEWER", L"10 NEW", L"8 PAIN", L"9 X" }, {});
    EXPECT_EQ(marks(), L"-NCN");
}

TEST_F(RecordNewsTest, WhatIsAsItWasIsNoNews)
{
    load(7, { L"8 PAIN", L"9 X" });
    load(7, { L"8 OTHER" });
    EXPECT_EQ(marks(), L"C[Tx Contract]-");
    load(7, { L"9 X", L"8 PAIN" }); // in another order
    EXPECT_EQ(marks(), L"---");
}

TEST_F(RecordNewsTest, EachPatientIsComparedWithItself)
{
    load(7, { L"8 PAIN" });
    load(7, { L"8 OTHER" });
    EXPECT_EQ(marks(), L"C-");
    load(12, { L"8 X" });
    EXPECT_EQ(marks(), L"--");
    load(7, { L"8 OTHER", L"9 X" }); // the change was seen when the user left the patient
    EXPECT_EQ(marks(), L"-N-");
    news.forget();
    load(7, { L"1 Z" });
    EXPECT_EQ(marks(), L"--");
}

TEST_F(RecordNewsTest, OwnChangesAreNoNews)
{
    load(7, { L"8 PAIN", L"9 X" });
    news.expectRemoval(L"TXC^8");
    load(7, { L"9 X" });
    EXPECT_EQ(marks(), L"--");
    load(7, { L"8 PAIN", L"9 X" });
    load(7, { L"9 X" }); // the second time by somebody else; nobody has seen it
    EXPECT_EQ(marks(), L"--");
}

TEST_F(RecordNewsTest, RecordsThatCouldNotBeReadStayAsSeen)
{
    const std::vector contracts { &recordType(RecordTypeNumber::TreatmentContract) };
    load(7, {}, { L"1 EXAM" }, contracts);
    load(7, { L"8 PAIN" });
    EXPECT_EQ(marks(), L"--"); // nobody knows whether it is new
    load(7, {}, { L"1 EXAM" }, contracts);
    EXPECT_EQ(marks(), L"-");
    load(7, { L"8 OTHER", L"9 X" });
    EXPECT_EQ(marks(), L"CN-");
}

}
}
