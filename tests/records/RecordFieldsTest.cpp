#include "records/RecordFields.h"

#include "tests/support/ControlFixture.h"
#include "tests/support/MadeRecords.h"

namespace health::test {
namespace {

// "caption: value (before)" for each field.
Transcript told(const ListedRecord& record, const ListedRecord* before = nullptr)
{
    Transcript lines;
    for (const RecordField& field : recordFields(record, before))
        lines.push_back(
            field.caption + L": " + field.value + (field.before.empty() ? L"" : L" (" + field.before + L")"));
    return lines;
}

TEST(RecordFields, NameEveryPieceAsTheFormsDo)
{
    struct Case {
        RecordTypeNumber type;
        TextView line;
        Transcript fields;
    };
    using enum RecordTypeNumber;
    for (const Case& kind : {
             Case { Reproductive, L"g3P1LC1SA1TA10^07/24/2026^NONE^07/01/2020^SONOGRAM^04/30/2027",
                 { L"G: 3", L"P: 1", L"LC: 1", L"SA: 1", L"TA: 10", L"LMP: 07/24/2026", L"Date FP Began: 07/01/2020",
                     L"Family Planning Method: None", L"Est. Delivery: 04/30/2027", L"Determined By: Sonogram" } },
             Case { Reproductive, L"G3 twins", { L"Reproductive History: G3 TWINS" } },
             Case { InfantFeeding, L"1^1^3260318|2^1/2 BREAST & 1/2 FORMULA|3",
                 { L"Infant Feeding Choice: 1/2 Breast & 1/2 Formula" } },
             Case { BirthMeasurements, L"^^^3232^^^^^^1^2W^6M^^HARTLEY,MARIGOLD|1",
                 { L"Birth Weight: 3232 grams", L"Birth Order: 1", L"Formula Started: 2w",
                     L"Breast Feeding Stopped: 6m", L"Mother or Guardian: Hartley,Marigold" } },
             Case { TreatmentContract, L"1^^03/18/2026@08:50|2^MENTAL HEALTH|M^03/18/2026^WHITCOMB,YOLANDA|7",
                 { L"Type: Mental Health", L"Date Initiated: 03/18/2026", L"Provider: Whitcomb,Yolanda" } },
             Case { Refusal, L"1^^^IMMUNIZATION^3^TETANUS-DIPHTHERIA^^^3260922^^^Wants to ask HER midwife",
                 { L"Refusal Type: Immunization", L"Refusal Item: TETANUS-DIPHTHERIA", L"Date Refused: 09/22/2026",
                     L"Comment: Wants to ask HER midwife" } },
             Case { EmergencyRoom, L"1^^3260922|4^URGENT|U^^^^^^ADMITTED|A^^3260922.1015^^STABLE^CITY HOSPITAL|4;X",
                 { L"Urgency: Urgent", L"Disposition of Care: Admitted", L"Departure Date/Time: 09/22/2026 10:15",
                     L"Condition on Departure: Stable", L"Transferred To: City Hospital" } },
         }) {
        const auto records = madeRecords(kind.type, { kind.line });
        EXPECT_EQ(told(records.front()), kind.fields);
        EXPECT_EQ(recordBefore(records, 0), nullptr);
    }
}

TEST(RecordFields, CompareWithTheRecordBeforeInTime)
{
    const auto records = madeRecords(RecordTypeNumber::Asthma,
        { L"1^^3260922.143|1^MILD PERSISTENT|2^61^^400^NO", L"2^^3261121.0815|2^MILD INTERMITTENT|1^93^49^400^YES",
            L"3^^|3^^12", L"4^^3260615|3^^84^63", L"5^^3260615.08|3^^50", L"6^^3260900|3^^40" });
    EXPECT_EQ(recordBefore(records, 1), &records[0]);
    EXPECT_EQ(recordBefore(records, 0), &records[4]); // the list's order is not that of time
    EXPECT_EQ(recordBefore(records, 3), nullptr);
    EXPECT_EQ(recordBefore(records, 2), nullptr); // without a date
    EXPECT_EQ(recordBefore(records, 4), nullptr); // it may have been earlier that day
    EXPECT_EQ(told(records[1], &records[0]),
        (Transcript { L"Severity: Mild Intermittent (Mild Persistent)", L"FEV 1: 93 (61)", L"FEF 25-75: 49",
            L"PEF/Best PF: 400", L"Env. Tobacco Smoke: Yes (No)" }));
    EXPECT_EQ(told(records[0], &records[3]),
        (Transcript { L"Severity: Mild Persistent", L"FEV 1: 61 (84)", L"FEF 25-75:  (63)", L"PEF/Best PF: 400",
            L"Env. Tobacco Smoke: No" }));
}

TEST(RecordFields, RefusalsFollowNoOtherRecord)
{
    const auto records =
        madeRecords(RecordTypeNumber::Refusal, { L"1^^^EXAM^1^FOOT^^^3260922", L"2^^^EXAM^2^EYE^^^3260101" });
    EXPECT_EQ(recordBefore(records, 0), nullptr);
}

using ListedFieldsTest = ControlFixture;

TEST_F(ListedFieldsTest, ABirthWeightReadsAsInItsSummary)
{
    reply(L"MEVBMSR GET", L"7^2^3.2^3232^^^^^^1");
    open(12, L"M", L"4");
    const auto records = listedRecords(control);
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(told(records[0]).front(), L"Birth Weight: 7 lbs 2 ozs (3.2 kgs), 3232 grams");
}

}
}
