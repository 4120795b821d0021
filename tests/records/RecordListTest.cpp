#include "records/RecordList.h"

#include "tests/support/ControlFixture.h"

namespace health::test {
namespace {

using RecordListTest = ControlFixture;

TEST_F(RecordListTest, EachRowHasTheLineThatItWasMadeOf)
{
    host.encounter->visit = 81;
    openChild();
    const auto records = listedRecords(control);
    ASSERT_EQ(records.size(), 7u);
    EXPECT_EQ(records[0].line, L"G0");
    EXPECT_EQ(records[0].key, L"REPR");
    EXPECT_EQ(recordDate(records[0]), L"");
    EXPECT_EQ(records[2].type->number, RecordTypeNumber::InfantFeeding);
    EXPECT_EQ(records[2].line, L"5^^3260310|81^X");
    EXPECT_EQ(recordDate(records[2]), L"3260310");
    EXPECT_EQ(records[2].visit, L"81");
    EXPECT_TRUE(records[2].isOfCurrentVisit);
    EXPECT_FALSE(records[6].isOfCurrentVisit); // a refusal belongs to no visit
}

TEST_F(RecordListTest, NoRecordsWithoutAPatientOrAServer)
{
    openChild();
    commitPatient(0);
    EXPECT_TRUE(listedRecords(control).empty());
    reply(L"MEVREF GET", L"5^^^EXAM^^X^^^3260310^1\r\nNo line break");
    commitPatient(13, L"M");
    const auto records = listedRecords(control);
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(recordDate(records.back()), L"3260310");
    EXPECT_TRUE(records.back().isLocked);
    EXPECT_EQ(static_cast<int>(records.size()), control.fgData.rowCount());
}

}
}
