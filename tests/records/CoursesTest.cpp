// The courses of all kinds but asthma.
#include "records/ContractCourse.h"
#include "records/FeedingCourse.h"
#include "records/FunctionalCourse.h"
#include "records/RefusalCourse.h"
#include "records/ReproductiveCourse.h"
#include "tests/support/MadeRecords.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

using Texts = std::vector<Text>;

// --- Functional status ---

using Change = FunctionalCourse::Change;
using Level = FunctionalCourse::Level;

// From the latest to the oldest, as the server sends them.
std::vector<ListedRecord> assessments()
{
    return madeRecords(RecordTypeNumber::FunctionalStatus,
        { L"9^^3261121.113|81^INDEPENDENT^NEEDS HELP^TOTALLY DEPENDENT^^^^NEEDS HELP^^^^^^DECLINE^NO",
            L"8^^3260822.113|80^^NEEDS HELP|N^NEEDS HELP^Sometimes^^^TOTALLY DEPENDENT", L"7^^3260610|79^^^INDEPENDENT",
            L"6^1^3260305.1|78^NEEDS HELP^NEEDS HELP^NEEDS HELP", L"5^1^3251202|77", L"4^1^3250900|76^^INDEPENDENT",
            L"3^1^soon|75^INDEPENDENT" });
}

TEST(FunctionalCourse, ShowsTheLastFiveUpToTheSelectedOne)
{
    const auto records = assessments();
    const FunctionalCourse latest(records, 0);
    ASSERT_EQ(latest.assessments().size(), 5u);
    EXPECT_EQ(latest.assessments().front().record, 4);
    EXPECT_EQ(latest.assessments().back().record, 0);
    EXPECT_EQ(latest.extent(5), L"last 5 of 6 assessments");
    EXPECT_EQ(latest.extent(1), L"last of 6 assessments");
    EXPECT_EQ(latest.note(), L"1 assessment has no readable date and is not drawn.");
    EXPECT_EQ(latest.assessments().back().statusChange, L"Decline");
    EXPECT_EQ(latest.assessments().back().caregiver, L"No");

    const FunctionalCourse earlier(records, 2);
    EXPECT_EQ(earlier.assessments().back().record, 2);
    EXPECT_EQ(earlier.extent(4), L"assessments 1 to 4 of 6");
    EXPECT_EQ(earlier.extent(1), L"assessment 4 of 6");

    EXPECT_TRUE(FunctionalCourse(records, 6).assessments().empty()); // it has no place in time
}

TEST(FunctionalCourse, ComparesWithTheLastAssessmentThatRecordedTheItem)
{
    const auto records = assessments();
    const FunctionalCourse course(records, 0);
    const auto& last = course.assessments().back();
    const auto& before = course.assessments()[3];
    EXPECT_EQ(FunctionalCourse::valueText(last, 0),
        L"Toileting on 11/21/2026 11:30: Independent, needs less help than before (Needs Help on 03/05/2026 10:00)");
    EXPECT_EQ(FunctionalCourse::valueText(last, 2),
        L"Dressing on 11/21/2026 11:30: Totally Dependent, needs more help than before (Needs Help on 08/22/2026 "
        L"11:30)");
    EXPECT_EQ(last.values[6].change, Change::NeedsLessHelp);
    EXPECT_EQ(last.values[1].change, Change::None); // the same
    EXPECT_EQ(course.assessments()[1].values[1].before, L"Independent in 09/2025"); // no longer shown
    EXPECT_EQ(before.values[3].level, Level::Other);
    EXPECT_EQ(FunctionalCourse::valueText(before, 3), L"Transfers on 08/22/2026 11:30: Sometimes");
    EXPECT_EQ(FunctionalCourse::valueText(before, 0), L"Toileting on 08/22/2026 11:30: not recorded");
    EXPECT_EQ(before.values[0].change, Change::None);
}

// A text that is no level neither changes nor hides a change.
TEST(FunctionalCourse, SkipsTextsThatAreNoLevel)
{
    const auto records = madeRecords(RecordTypeNumber::FunctionalStatus,
        { L"3^^3260611|81^NEEDS HELP", L"2^^3260610|81^SOMETIMES", L"1^^3260609|81^INDEPENDENT" });
    const FunctionalCourse course(records, 0);
    EXPECT_EQ(course.assessments()[1].values[0].change, Change::None);
    EXPECT_EQ(course.assessments()[2].values[0].before, L"Independent on 06/09/2026");
}

// Two assessments of one day without times, and one of the month around them, have no certain order.
TEST(FunctionalCourse, ClaimsNoChangeBetweenAssessmentsWhoseOrderIsNotCertain)
{
    const auto records = madeRecords(RecordTypeNumber::FunctionalStatus,
        { L"4^^3260611|81^NEEDS HELP", L"3^^3260610|81^NEEDS HELP", L"2^^3260610|81^INDEPENDENT",
            L"1^^3260600|81^TOTALLY DEPENDENT" });
    const FunctionalCourse course(records, 0);
    ASSERT_EQ(course.assessments().size(), 4u);
    for (const auto& assessment : course.assessments())
        EXPECT_EQ(assessment.values[0].change, Change::None) << assessment.record;
}

TEST(FunctionalCourse, CountsRecordedItemsOnly)
{
    const auto records = assessments();
    const FunctionalCourse course(records, 0);
    EXPECT_EQ(FunctionalCourse::countText(course.assessments().back(), 0), L"1 of 3");
    EXPECT_EQ(FunctionalCourse::countText(course.assessments()[3], 0), L"0 of 2"); // "Sometimes" is no level
    EXPECT_EQ(FunctionalCourse::countText(course.assessments()[0], 1), L"");
    EXPECT_EQ(FunctionalCourse::countSentence(course.assessments()[0], 1),
        L"Instrumental Activities of Daily Living on 12/02/2025: no item recorded");
    const CourseTable table = course.table();
    ASSERT_EQ(table.rows.size(), 16u);
    EXPECT_EQ(table.headings,
        (Texts {
            L"Item", L"12/02/2025", L"03/05/2026 10:00", L"06/10/2026", L"08/22/2026 11:30", L"11/21/2026 11:30" }));
    EXPECT_EQ(table.rows[2],
        (Texts { L"Dressing", L"", L"Needs Help", L"Independent, needs less help than before",
            L"Needs Help, needs more help than before", L"Totally Dependent, needs more help than before" }));
    EXPECT_EQ(table.rows[6],
        (Texts { L"Activities of Daily Living, independent", L"", L"0 of 3", L"1 of 1", L"0 of 2", L"1 of 3" }));
    EXPECT_EQ(table.rows[10][0], L"Housework");
    EXPECT_EQ(table.rows[15], (Texts { L"Patient is Caregiver to Others", L"", L"", L"", L"", L"No" }));
}

// --- Infant feeding ---

TEST(FeedingCourse, MarksChangesAndSaysTheAge)
{
    const auto records = madeRecords(RecordTypeNumber::InfantFeeding,
        { L"5^^3260400|85^FORMULA ONLY|5", L"4^^3260810.0915|84^MOSTLY FORMULA|4", L"3^^3260310|83^goat milk",
            L"2^^3260225|82^EXCLUSIVE BREASTFEEDING|1", L"1^^3260223|81^exclusive breastfeeding|1", L"0^^3260224|80^",
            L"6^^3261301|80^MOSTLY FORMULA|4", L"7" });
    const FeedingCourse course(records, momentOf(2026, 2, 20));
    EXPECT_EQ(
        course.choices(), (Texts { L"Exclusive Breastfeeding", L"Mostly Formula", L"Formula Only", L"Goat Milk" }));
    EXPECT_EQ(course.extent(), L"5 visits, 3 changes");
    EXPECT_EQ(
        course.note(), L"2 visits have no readable date and are not drawn. 1 visit without a choice is not drawn.");
    Texts texts;
    for (const auto& visit : course.visits())
        texts.push_back(course.visitText(visit));
    EXPECT_EQ(texts,
        (Texts { L"Exclusive Breastfeeding on 02/23/2026, age 3 days",
            L"Exclusive Breastfeeding on 02/25/2026, age 5 days",
            L"Goat Milk on 03/10/2026, age 2 weeks; changed from Exclusive Breastfeeding",
            L"Formula Only in 04/2026; changed from Goat Milk",
            L"Mostly Formula on 08/10/2026 09:15, age 5 months; changed from Formula Only" }));
    EXPECT_EQ(course.table().rows[4], (Texts { L"08/10/2026 09:15", L"5 months", L"Mostly Formula", L"Formula Only" }));
    EXPECT_EQ(FeedingCourse(records, std::nullopt).visits()[0].age, L"");
    const auto sameDay =
        madeRecords(RecordTypeNumber::InfantFeeding, { L"2^^3260310|81^MIXED", L"1^^3260310|81^FORMULA ONLY|5" });
    EXPECT_EQ(FeedingCourse(sameDay, std::nullopt).visits()[1].before, L""); // which came first is not certain
    EXPECT_EQ(FeedingCourse(sameDay, std::nullopt).extent(), L"2 visits, 1 change");
}

TEST(FeedingCourse, CountsCompletedUnitsOfAge)
{
    const Moment birth = momentOf(2025, 12, 31, 23, 50);
    const std::pair<Moment, TextView> ages[] = { { momentOf(2025, 12, 30), L"" },
        { momentOf(2025, 12, 31, 8), L"0 days" }, { momentOf(2026, 1, 13), L"13 days" },
        { momentOf(2026, 1, 14), L"2 weeks" }, { momentOf(2026, 3, 30), L"12 weeks" },
        { momentOf(2026, 3, 31), L"3 months" }, { momentOf(2026, 4, 30), L"3 months" },
        { momentOf(2027, 12, 30), L"23 months" }, { momentOf(2027, 12, 31), L"2 years" } };
    for (const auto& [day, text] : ages)
        EXPECT_EQ(ageText(birth, day), text);
}

// --- Reproductive history ---

const Moment Today = momentOf(2026, 11, 21, 14, 31);

ReproductiveCourse history(TextView line)
{
    const auto records = madeRecords(RecordTypeNumber::Reproductive, { line });
    return { records, 0, Today };
}

Texts eventTexts(const ReproductiveCourse& course)
{
    Texts texts;
    for (const auto& event : course.events())
        texts.push_back(event.text);
    return texts;
}

TEST(ReproductiveCourse, PlacesTodayInAPregnancy)
{
    const auto course = history(L"G3P1LC12SA1TA0^07/24/2026^NONE^01/25/2026^SONOGRAM^04/30/2027");
    EXPECT_EQ(course.statements(),
        (Texts { L"Today 17 weeks 1 day since the LMP",
            L"Estimated delivery: 04/30/2027, in 22 weeks, determined by Sonogram" }));
    EXPECT_EQ(eventTexts(course),
        (Texts { L"LMP: 07/24/2026", L"14 weeks: 10/30/2026, the second trimester begins",
            L"today: 11/21/2026, 17 weeks 1 day since the LMP", L"28 weeks: 02/05/2027, the third trimester begins",
            L"estimated delivery: 04/30/2027, determined by Sonogram" }));
    EXPECT_EQ(course.table().rows[2], (Texts { L"Living Children", L"12" }));
    EXPECT_EQ(course.table().rows[5], (Texts { L"LMP", L"07/24/2026" }));
}

// Each line is a history with gaps or doubts: what is said, and what is on the line of time.
TEST(ReproductiveCourse, SaysWhatIsMissing)
{
    struct Case {
        TextView line;
        Texts statements;
        std::size_t events;
    };
    const Case cases[] = {
        // An old period alone is no pregnancy.
        { L"G0^07/24/2026", { L"No pregnancy recorded" }, 2 },
        { L"", { L"LMP not recorded", L"No pregnancy recorded" }, 1 },
        { L"^12/01/2026", { L"LMP: 12/01/2026, which is in the future", L"No pregnancy recorded" }, 2 },
        { L"^11/21/2026^^^^08/28/2027",
            { L"Today 0 weeks since the LMP", L"Estimated delivery: 08/28/2027, in 9 months" }, 5 },
        { L"^07/00/2026^^^^04/30/2027",
            { L"LMP: 07/00/2026, which is not a full date", L"Estimated delivery: 04/30/2027, in 22 weeks" }, 2 },
        { L"^3260000^^^LMP",
            { L"LMP: 3260000, which is not a full date", L"Estimated delivery not recorded; determined by Lmp" }, 1 },
        // The dates do not agree: no trimesters.
        { L"^07/24/2026^^^SONOGRAM^05/04/2027",
            { L"Today 17 weeks 1 day since the LMP",
                L"Estimated delivery: 05/04/2027, in 23 weeks, determined by Sonogram",
                L"280 days after the LMP: 04/30/2027, 4 days earlier than the estimate" },
            3 },
        { L"^07/24/2026^^^EXAM^",
            { L"Today 17 weeks 1 day since the LMP", L"Estimated delivery not recorded; determined by Exam",
                L"280 days after the LMP: 04/30/2027" },
            2 },
        // Passed: no weeks.
        { L"^01/05/2026^^^^10/12/2026", { L"Estimated delivery: 10/12/2026, which has passed" }, 3 },
        { L"^07/24/2026^^^^11/20/2026",
            { L"Estimated delivery: 11/20/2026, which has passed",
                L"280 days after the LMP: 04/30/2027, 161 days later than the estimate" },
            3 },
        { L"^07/24/2026^^^^11/21/2026",
            { L"Today 17 weeks 1 day since the LMP", L"Estimated delivery: 11/21/2026, today",
                L"280 days after the LMP: 04/30/2027, 160 days later than the estimate" },
            3 },
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(testing::PrintToString(one.line));
        const auto course = history(one.line);
        EXPECT_EQ(course.statements(), one.statements);
        EXPECT_EQ(course.events().size(), one.events);
    }
}

// --- Refusals ---

TEST(RefusalCourse, GathersTheRefusalsOfAnItem)
{
    const auto records = madeRecords(RecordTypeNumber::Refusal,
        { L"8^^^IMMUNIZATION^14^INFLUENZA^^^3251102^1^^Wants to wait; then decides",
            L"7^^^IMMUNIZATION^14^influenza^^^3261120^1^^", L"6^^^LAB^14^INFLUENZA^^^3260000^1^^",
            L"5^^^MAMMOGRAM^^^^^3261121", L"4^^^EKG^9^EKG^^^^1^^", L"3^^^IMMUNIZATION^14^INFLUENZA^^^9999999^1^^" });
    const RefusalCourse course(records);
    Texts names, summaries;
    for (const auto& item : course.items()) {
        names.push_back(item.name);
        summaries.push_back(item.wholeSummary());
    }
    EXPECT_EQ(names, (Texts { L"MAMMOGRAM", L"influenza (Immunization)", L"INFLUENZA (Lab)", L"EKG" }));
    EXPECT_EQ(summaries,
        (Texts { L"once, on 11/21/2026", L"3 times, last on 11/20/2026, 1 without a readable date", L"once, in 2026",
            L"once, no readable date" }));
    const auto& influenza = course.items()[1];
    EXPECT_EQ(RefusalCourse::refusalText(influenza, influenza.refusals[0]),
        L"influenza (Immunization), refused on 11/02/2025: Wants to wait; then decides");
    EXPECT_TRUE(influenza.holds(5));
    EXPECT_FALSE(influenza.holds(2));
    EXPECT_EQ(course.extent(), L"6 refusals of 4 items");
    EXPECT_EQ(course.table().rows[1][2], L"11/02/2025: Wants to wait; then decides; 11/20/2026");
}

// --- Contracts ---

// The form accepts an initiation until 365 days have passed, to the second.
TEST(ContractCourse, RunsFor365Days)
{
    struct Case {
        TextView initiated;
        TextView words;
    };
    const Case cases[] = {
        { L"11/21/2026", L"running, 364 days left" },
        { L"11/22/2025", L"running, less than a day left" },
        { L"11/23/2025", L"running, 1 day left" },
        { L"11/21/2025 14:31", L"running, less than a day left" }, // the last second
        { L"11/21/2025 14:30", L"ran out on 11/21/2026" },
        { L"11/21/2025", L"ran out on 11/21/2026" },
        { L"11/22/2026", L"begins on 11/22/2026" },
        { L"", L"date initiated not recorded" },
        { L"11/00/2026", L"initiated 11/00/2026, which is not a full date" },
        { L"3251100", L"initiated 11/2025, which is not a full date" },
    };
    for (const Case& one : cases) {
        const Text line = L"5^^11/21/2026@08:15|81^PAIN|P^" + Text(one.initiated) + L"^OAK,KIT J|15";
        const auto records = madeRecords(RecordTypeNumber::TreatmentContract, { line });
        EXPECT_EQ(ContractCourse(records, Today).contracts().at(0).words, one.words);
    }
}

TEST(ContractCourse, ListsTheLatestFirst)
{
    const auto records = madeRecords(RecordTypeNumber::TreatmentContract,
        { L"5^^x^^^", L"4^^01/05/2026@10:00|81^MENTAL HEALTH|M^02/01/2026^OAK,KIT J|15",
            L"3^^01/05/2026@10:00|81^PAIN|P^03/18/2026", L"2^^^PAIN|P^03/18/2025^WHITCOMB,YOLANDA D|16" });
    const ContractCourse course(records, Today);
    Texts texts;
    for (const auto& contract : course.contracts())
        texts.push_back(ContractCourse::contractText(contract));
    EXPECT_EQ(texts,
        (Texts { L"Pain: initiated on 03/18/2026, running, 116 days left",
            L"Mental Health \u00B7 Oak, Kit J: initiated on 02/01/2026, running, 71 days left",
            L"Pain \u00B7 Whitcomb, Yolanda D: initiated on 03/18/2025, ran out on 03/18/2026",
            L"Contract: date initiated not recorded" }));
    EXPECT_EQ(course.extent(), L"4 contracts, 2 running");
    EXPECT_EQ(course.table().rows[3], (Texts { L"", L"", L"", L"date initiated not recorded" }));
}

}
}
