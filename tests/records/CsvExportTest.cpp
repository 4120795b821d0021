#include "records/CsvExport.h"

#include "tests/support/ExportFixture.h"

namespace health::test {
namespace {

const std::string Mark = "\xEF\xBB\xBF";

class CsvExport : public ExportFixture {
protected:
    std::map<std::string, std::string> files()
    {
        std::map<std::string, std::string> files;
        for (const ExportedFile& file : exported().files(ExportFormat::Csv))
            files[narrow(file.name)] = file.bytes;
        return files;
    }
};

TEST_F(CsvExport, WritesAFileForEachKind)
{
    reply(L"MEVREP GET", replies::Reproductive);
    reply(L"MEVBMSR GET", replies::Birth);
    reply(L"MEVVIF GET", replies::Feeding);
    reply(L"MEVVELD GET", replies::Functional);
    reply(L"MEVVAST GET", L"3^^3260310|81^MILD PERSISTENT|2^90^-1^450^YES^^^\r\n4^1^3260000|^^^^^^^^\r\n");
    reply(L"MEVVTXC GET", replies::Contract);
    reply(L"MEVREF GET", replies::Refusal);
    open(12, L"F", L"4");
    const auto all = files();
    ASSERT_EQ(all.size(), 7u);
    EXPECT_EQ(all.at("patient-12-asthma-status.csv"),
        Mark
            + "Patient,Date,Severity,FEV,FEF,PEF,ETS,Particulates,\"Dust Mites\",\"Mgt. Plan\",Record,Visit,Locked\r\n"
              "12,2026-03-10,\"MILD PERSISTENT\",90,-1,450,YES,,,,3,81,No\r\n12,2026,,,,,,,,,4,,Yes\r\n");
    EXPECT_EQ(all.at("patient-12-treatment-contract.csv"),
        Mark
            + "Patient,Date,Initiated,Type,Provider,Record,Visit,Locked\r\n"
              "12,\"2026-01-05 10:00\",2026-02-01,PAIN,\"OAK,KIT J\",45,81,No\r\n");
    EXPECT_EQ(all.at("patient-12-refusal.csv"),
        Mark
            + "Patient,Date,Type,Item,Comment,Record,Visit,Locked\r\n"
              "12,2026-03-10,MEASUREMENTS,\"BLOOD PRESSURE\",\"Said No, twice\",8,,Yes\r\n");
    EXPECT_EQ(all.at("patient-12-birth-measurements.csv").substr(Mark.size()),
        "Patient,\"Weight (lb)\",\"Weight (oz)\",\"Weight (kg)\",\"Weight (g)\",\"Birth Order\",\"Formula Started\","
        "\"Breast Stopped\",\"Solids Started\",Mother\r\n12,7,2,3.23,3232,2,6M,2W,5M,\"HARTLEY,ROSE\"\r\n");
    EXPECT_NE(all.at("patient-12-reproductive-history.csv").find("12,G3P2LC1SA0TA0,2026-01-05"), std::string::npos);
    EXPECT_NE(all.at("patient-12-functional-status.csv").find("\"2026-03-10 09:15\",DECLINE,YES"), std::string::npos);
    EXPECT_NE(all.at("patient-12-infant-feeding.csv").find("1/2 BREAST & 1/2 FORMULA"), std::string::npos);
}

TEST_F(CsvExport, ALineBreakStaysInItsCell)
{
    reply(L"MEVREF GET", L"8^^^EXAM^14^^^^3260310^^^One\nTwo\r\n9^^^EXAM^14^^^^3260310^^^One\rTwo\r\n");
    open(12, L"M");
    const std::string refusals = files().at("patient-12-refusal.csv");
    EXPECT_NE(refusals.find("\"One\nTwo\""), std::string::npos) << refusals;
    EXPECT_NE(refusals.find("\"One\rTwo\""), std::string::npos) << refusals;
}

TEST_F(CsvExport, NoCellIsAFormula)
{
    for (const TextView formula : { L"=1+1", L"+cmd", L"-2+3", L"@SUM(A1)", L"\tx", L"\rx", L"\nx", L"  =1", L"\"=1",
             L"' =1", L"\u00A0=1", L"\uFF1D1", L"-1" })
        EXPECT_EQ(guardedCell(formula), L'\'' + Text(formula)) << narrow(formula);
    for (const TextView text : { L"", L" ", L"1-1", L"a=1", L"x@y", L"\"quoted\"" })
        EXPECT_EQ(guardedCell(text), text);
    reply(L"MEVREF GET", L"8^^^EXAM^14^=HYPERLINK(\"x\")^^^@NOW()^1^^+1\r\n");
    reply(L"MEVVAST GET", L"=5^^3260310|=1^MILD^+90^=1^-1E5^YES\r\n");
    open(12, L"M");
    const auto all = files();
    EXPECT_NE(
        all.at("patient-12-refusal.csv").find("\r\n12,\"'@NOW()\",EXAM,\"'=HYPERLINK(\"\"x\"\")\",\"'+1\",8,,Yes\r\n"),
        std::string::npos)
        << all.at("patient-12-refusal.csv");
    EXPECT_NE(all.at("patient-12-asthma-status.csv")
                  .find("\r\n12,2026-03-10,MILD,+90,\"'=1\",\"'-1E5\",YES,,,,\"'=5\",\"'=1\",No\r\n"),
        std::string::npos)
        << all.at("patient-12-asthma-status.csv");
}

TEST_F(CsvExport, ACopiedRecordIsOneLine)
{
    reply(L"MEVREF GET", L"8^^^EXAM^14^=1\t2^^^3260310^1^^two\nlines\r\n");
    reply(L"MEVVIF GET", replies::Feeding);
    reply(L"MEVVTXC GET", L"4^1^=1\n2|81^PAIN|P\r\n");
    open(12, L"M", L"2");
    exported();
    ASSERT_EQ(listed.size(), 3u);
    EXPECT_EQ(copiedRecord(listed[0]), L"Infant Feeding\t2026-03-10 14:30\tFeeding Choice=1/2 BREAST & 1/2 FORMULA");
    EXPECT_TRUE(copiedRecord(listed[1]).starts_with(L"Tx Contract\t'=1 2\t")); // not a date
    EXPECT_EQ(copiedRecord(listed[2]), L"Refusal\t2026-03-10\tType=EXAM\tItem==1 2\tComment=two lines");
}

}
}
