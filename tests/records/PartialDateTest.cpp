#include "records/PartialDate.h"

#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

// As exports write a date; "-" for a text that is not one.
Text read(TextView stored)
{
    const auto date = storedDate(stored);
    return !date ? L"-" : isoText(*date) + (date->time ? L" " + clockText(*date->time) : L"");
}

TEST(PartialDate, KeepsThePrecisionOfAStoredDate)
{
    EXPECT_EQ(read(L"3260310"), L"2026-03-10");
    EXPECT_EQ(read(L"3260310.143"), L"2026-03-10 14:30");
    EXPECT_EQ(read(L"3260310.000001"), L"2026-03-10 00:00:01");
    EXPECT_EQ(read(L"3260300"), L"2026-03");
    EXPECT_EQ(read(L"3260000"), L"2026");
    EXPECT_EQ(read(L"03/10/2026"), L"2026-03-10");
    EXPECT_EQ(read(L"3/1/2026@9:05"), L"2026-03-01 09:05");
    EXPECT_EQ(read(L"03/00/2026"), L"2026-03");
    EXPECT_EQ(read(L"00/00/2026"), L"2026");
    EXPECT_EQ(read(L"2960229"), L"1996-02-29");
    EXPECT_EQ(read(L"3260310.24"), L"2026-03-10"); // the end of that day, not of the next one
}

TEST(PartialDate, InventsNothing)
{
    for (const TextView text :
        { L"", L"0", L"3260230", L"3250229", L"3261301", L"3260010", L"326031", L"32603100", L"3260310.",
            L"3260310.1.2", L"-3260310", L"3260310x", L"02/30/2026", L"02/29/2025", L"13/01/2026", L"1/2/26",
            L"1/2/2026/3", L"03/10/2026@", L"03/10/2026@x:30", L"MAR 2026", L"2026-03-10", L"\uFF13260310" })
        EXPECT_EQ(read(text), L"-") << narrow(text);
    EXPECT_EQ(read(L"03/10/2026@25:00"), L"2026-03-10");
    EXPECT_EQ(read(L"03/00/2026@10:00"), L"2026-03");
}

TEST(PartialDate, ReadsIsoDates)
{
    for (const TextView text : { L"1996", L"1996-04", L"1996-04-02" })
        EXPECT_EQ(isoText(isoDate(text).value()), text);
    for (const TextView text : { L"", L"96", L"1996-", L"1996-4", L"1996-00", L"1996-13", L"1996-04-00", L"1996-02-30",
             L"1996/04/02", L"1996-04-02T10:00", L"0000" })
        EXPECT_FALSE(isoDate(text)) << narrow(text);
}

}
}
