#include "records/FhirExport.h"

#include "records/FhirCodes.h"
#include "tests/support/ExportFixture.h"

#include <set>

namespace health::test {
namespace {

// The check digit of LOINC: from the right, every other digit doubled, the sum filled to a multiple of ten.
bool isLoinc(TextView code)
{
    const std::size_t dash = code.find(L'-');
    if (dash == TextView::npos || dash + 2 != code.size())
        return false;
    int sum = 0;
    bool doubled = true;
    for (std::size_t i = dash; i-- > 0; doubled = !doubled) {
        const int digit = (code[i] - L'0') * (doubled ? 2 : 1);
        sum += digit / 10 + digit % 10;
    }
    return (10 - sum % 10) % 10 == code.back() - L'0';
}

// The check digit of SNOMED CT: Verhoeff's.
bool isSnomed(TextView code)
{
    constexpr int permutation[] = { 1, 5, 7, 6, 2, 8, 3, 0, 9, 4 };
    // Multiplication in the dihedral group of ten elements.
    const auto times = [](int a, int b) {
        const int turned = a < 5 ? (a + b % 5) % 5 : (a - b % 5 + 10) % 5;
        return (a < 5) == (b < 5) ? turned : turned + 5;
    };
    int check = 0;
    for (std::size_t i = 0; i < code.size(); ++i) {
        int digit = code[code.size() - 1 - i] - L'0';
        for (std::size_t turn = i % 8; turn > 0; --turn)
            digit = permutation[digit];
        check = times(check, digit);
    }
    return check == 0 && code.size() >= 6;
}

TEST(FhirCodes, HaveTheirCheckDigitsAndAreUnique)
{
    EXPECT_FALSE(isLoinc(L"11637-0")); // a code that circulates, and is wrong
    EXPECT_TRUE(isLoinc(L"11637-6"));
    EXPECT_FALSE(isSnomed(L"427679008"));
    EXPECT_FALSE(isSnomed(L"426797007")); // two digits swapped
    std::set<TextView> codes;
    std::set<TextView> publicCodes;
    for (const ItemCode* const item : itemCodes()) {
        EXPECT_TRUE(codes.insert(item->code).second) << narrow(item->code);
        EXPECT_TRUE(item->loinc.empty() || isLoinc(item->loinc)) << narrow(item->loinc);
        EXPECT_TRUE(item->loinc.empty() || publicCodes.insert(item->loinc).second) << narrow(item->loinc);
    }
    for (const ValueCode& value : valueCodes()) {
        EXPECT_TRUE(codes.insert(value.code).second) << narrow(value.code);
        EXPECT_TRUE(value.snomed.empty() || isSnomed(value.snomed)) << narrow(value.snomed);
        EXPECT_TRUE(value.snomed.empty() || publicCodes.insert(value.snomed).second) << narrow(value.snomed);
    }
    EXPECT_EQ(publicCodes.size(), 9u + 5u);
}

class FhirExport : public ExportFixture {
protected:
    void openAll()
    {
        reply(L"MEVREP GET", replies::Reproductive);
        reply(L"MEVBMSR GET", replies::Birth);
        reply(L"MEVVIF GET", replies::Feeding);
        reply(L"MEVVELD GET", replies::Functional);
        reply(L"MEVVAST GET", replies::Asthma);
        reply(L"MEVVTXC GET", replies::Contract);
        reply(L"MEVREF GET", replies::Refusal);
        open(12, L"F", L"4");
    }
    // How often a text occurs in the Bundle.
    static int count(const std::string& text, std::string_view part)
    {
        int found = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++found;
        return found;
    }
    static bool has(const std::string& text, std::string_view part) { return count(text, part) > 0; }
};

TEST_F(FhirExport, IsTheSameEachTime)
{
    openAll();
    const std::string first = fhir();
    host.desktop.today += std::chrono::hours(1);
    push(L"REFRESH");
    EXPECT_EQ(fhir(), first);
    EXPECT_EQ(count(first, "\"fullUrl\""), 1 + 9 + 5 + 1 + 1 + 5 + 1 + 1);
    EXPECT_EQ(count(first, "\"Patient\""), 1);
}

TEST_F(FhirExport, WritesTheShownRecordsInTheirOrder)
{
    openAll();
    const std::string two = fhir({}, std::vector { 6, 4 });
    EXPECT_LT(two.find("\"Procedure\""), two.find("\"Observation\""));
    EXPECT_FALSE(has(two, "\"Contract\""));
    EXPECT_TRUE(has(two, R"("code":"filtered","display":"2 of 7 records")"));
    EXPECT_FALSE(has(fhir(), "filtered"));
}

TEST_F(FhirExport, KeepsThePrecisionOfDatesAndWritesNoTimeWithoutAZone)
{
    openAll();
    EXPECT_EQ(count(fhir(), "\"effectiveDateTime\":\"2026-03-10\""), 1 + 1 + 5);
    host.site->zone = L"-07:00";
    const std::string zoned = fhir();
    EXPECT_TRUE(has(zoned, "\"effectiveDateTime\":\"2026-03-10T14:30:00-07:00\""));
    EXPECT_TRUE(has(zoned, "\"effectiveDateTime\":\"2026-03-10T09:15:00-07:00\""));
    EXPECT_EQ(count(zoned, "\"effectiveDateTime\":\"2026-03-10\""), 5); // the asthma record has no time
    for (const TextView wrong : { L"-7:00", L"UTC", L"+15:00", L"+02:60", L"+02:00 " }) {
        host.site->zone = wrong;
        EXPECT_FALSE(has(fhir(), "T14:30")) << narrow(wrong);
    }
    reply(L"MEVREP GET", L"G1P0LC0SA0TA0^01/00/2026^^^^00/00/2026");
    push(L"REFRESH");
    EXPECT_TRUE(has(fhir(), "\"valueDateTime\":\"2026-01\""));
    EXPECT_TRUE(has(fhir(), "\"valueDateTime\":\"2026\""));
}

// Neither an estimated delivery in the past nor missing data say whether a patient is pregnant now.
TEST_F(FhirExport, ClaimsAPregnancyOnlyUntilTheEstimatedDelivery)
{
    openAll(); // today is 03/15/2026, the estimated delivery in October
    EXPECT_TRUE(has(fhir(), "82810-3"));
    for (const TextView pieces : { L"G0P0LC0SA0TA0^^^^SONOGRAM^03/14/2026", L"G0P0LC0SA0TA0^^^^SONOGRAM^",
             L"G0P0LC0SA0TA0^^^^^", L"G0P0LC0SA0TA0^^^^SONOGRAM^00/00/2027", L"G0P0LC0SA0TA0^^^^DATES^soon" }) {
        reply(L"MEVREP GET", pieces);
        push(L"REFRESH");
        EXPECT_FALSE(has(fhir(), "82810-3")) << narrow(pieces);
        EXPECT_FALSE(has(fhir(), "Not pregnant"));
    }
    EXPECT_TRUE(has(fhir(), "\"valueString\":\"soon\""));
    reply(L"MEVREP GET", L"G0P0LC0SA0TA0^^^^DATES^03/15/2026");
    push(L"REFRESH");
    EXPECT_TRUE(has(fhir(), "82810-3"));
}

TEST_F(FhirExport, WritesTheGuardianAndSnomedByChoiceOnly)
{
    openAll();
    const std::string plain = fhir();
    EXPECT_FALSE(has(plain, "HARTLEY")); // another patient's name
    EXPECT_FALSE(has(plain, "snomed"));
    const std::string full = fhir({ .namesGuardian = true, .usesSnomed = true });
    EXPECT_TRUE(has(full, "\"RelatedPerson\""));
    EXPECT_TRUE(has(full, "HARTLEY,ROSE"));
    EXPECT_TRUE(has(full, "426979002"));
    EXPECT_TRUE(has(full, "77386006"));
}

TEST_F(FhirExport, ExportsOnlyTheListedPatient)
{
    openAll();
    EXPECT_TRUE(exported().isPossible());
    setPatient(13); // the host has changed its patient, and the list still shows the former one
    EXPECT_FALSE(exported().isPossible());
    EXPECT_TRUE(exported().files(ExportFormat::Fhir).empty());
    EXPECT_TRUE(exported().files(ExportFormat::Csv).empty());
    commitPatient(0);
    EXPECT_FALSE(exported().isPossible());
    commitPatient(14);
    EXPECT_EQ(exported().records().extent(), L"5 records");
    EXPECT_EQ(exported(std::vector { 1 }).records().extent(), L"1 of 5 records");
}

TEST_F(FhirExport, SaysThatTheListIsIncomplete)
{
    openAll();
    EXPECT_EQ(exported().records().remark, L"");
    host.session->failCall(L"MEVVAST GET", L"The server failed.");
    push(L"REFRESH");
    EXPECT_EQ(exported().records().remark, L"Could not be read: Asthma Status.");
    EXPECT_TRUE(has(fhir(), R"("code":"incomplete","display":"Could not be read: Asthma Status.")"));
}

TEST_F(FhirExport, CleansTexts)
{
    EXPECT_EQ(fhirText(L" \u00A0a\u2003b\x01\x1C\r\n\t\xFFFE\u3000 "), L"a b\uFFFD\uFFFD\r\n\t\uFFFD");
    EXPECT_EQ(fhirText(L"\t\u2028 \n"), L"");
    EXPECT_EQ(plainDecimal(L"007.50"), L"7.50");
    EXPECT_EQ(plainDecimal(L".5"), L"0.5");
    EXPECT_EQ(plainDecimal(L"0"), L"0");
    for (const TextView text : { L"", L".", L"1e5", L"-1", L"1.2.3", L"1 2", L"1234567890123456", L"\u0663" })
        EXPECT_EQ(plainDecimal(text), L"") << narrow(text);
}

}
}
