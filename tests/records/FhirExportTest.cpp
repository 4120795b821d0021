#include "records/FhirExport.h"

#include "records/FhirCodes.h"
#include "tests/support/ExportFixture.h"

#include <regex>
#include <set>
#include <sstream>

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
    // What each resource says beside its narrative, its identifier and its patient, a line for each. Only the texts of
    // codes are written: "{Gravidity}"; public codes precede them: "{11996-6 Gravidity}".
    static std::string contents(const std::string& bundle)
    {
        // Without quotes.
        static const std::pair<std::regex, const char*> shortened[] = {
            { std::regex(R"(^resourceType:(\w+).*?identifier:\[\{system:[^,]*,value:[^}]*\}\])"), "$1" },
            { std::regex(R"(,?(subject|patient):\[?\{reference:[^}]*\}\]?)"), "" },
            { std::regex(R"(\{system:https?://personal-health\.example/codes[^}]*\},?)"), "" },
            { std::regex(R"(\{system:http://(loinc\.org|snomed\.info/sct),code:([^}]*)\},?)"), "$2 " },
            { std::regex(R"(\{system:http://terminology\.hl7\.org/CodeSystem/[^,]*,code:([^,}]*)[^}]*\})"), "$1 " },
            { std::regex(R"(\{coding:\[([^\]{]*)\](,text:)?([^}]*)\})"), "{$1$3}" },
            { std::regex(R"(\{identifier:\{system:[^,]*/(\w+),value:(\d+)\},display:([^}]*)\})"), "$1 $2 $3" },
            { std::regex("system:http://unitsofmeasure.org,"), "" },
            { std::regex(R"(\}\}(\]\})?,?$)"), "" },
        };
        std::string lines;
        std::istringstream stream(bundle);
        for (std::string line; std::getline(stream, line);) {
            if (line.find("fullUrl") == std::string::npos || line.find("\"Patient\"") != std::string::npos)
                continue;
            line.erase(0, line.find("resourceType"));
            std::erase(line, '"');
            for (const auto& [part, with] : shortened)
                line = std::regex_replace(line, part, with);
            lines += line + '\n';
        }
        return lines;
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

TEST_F(FhirExport, WritesEveryPieceInItsPlace)
{
    openAll();
    reply(L"MEVREF GET",
        L"8^^^MEASUREMENTS^14^BLOOD PRESSURE^^^3260310^1^^Said \x01No\r\n9^^^IMMUNIZATION^3^INFLUENZA^^^3260300\r\n"
        L"10^^^immunization^3^ ^^^soon\r\n11^^^MEDICATION/DRUG^3^ASPIRIN^^^3260000^^^why\r\n");
    push(L"REFRESH");
    EXPECT_EQ(contents(fhir({ .namesGuardian = true, .usesSnomed = true })),
        "Observation,status:final,code:{11996-6 Gravidity},valueInteger:3\n"
        "Observation,status:final,code:{11977-6 Parity},valueInteger:2\n"
        "Observation,status:final,code:{11638-4 Living children},valueInteger:1\n"
        "Observation,status:final,code:{11614-5 Spontaneous abortions},valueInteger:0\n"
        "Observation,status:final,code:{11613-7 Therapeutic abortions},valueInteger:0\n"
        "Observation,status:final,code:{8665-2 Last menstrual period},valueDateTime:2026-01-05\n"
        "Observation,status:final,code:{Contraceptive method},valueCodeableConcept:{ORAL CONTRACEPTIVES},"
        "component:[{code:{Date the method began},valueDateTime:2025-12-01}]\n"
        "Observation,status:final,category:[{social-history }],code:{82810-3 Pregnancy status},"
        "valueCodeableConcept:{77386006 Pregnant}\n"
        "Observation,status:final,code:{11778-8 Estimated delivery},valueDateTime:2026-10-12,"
        "method:{text:SONOGRAM}\n"
        "Observation,status:final,category:[{vital-signs }],code:{8339-4 Birth weight},"
        "valueQuantity:{value:3232,unit:g,code:g}\n"
        "Observation,status:final,code:{Birth order},valueInteger:2\n"
        "Observation,status:final,code:{Age when formula was started},valueQuantity:{value:6,unit:months,"
        "code:mo}\n"
        "Observation,status:final,code:{Age when breastfeeding was stopped},valueQuantity:{value:2,"
        "unit:weeks,code:wk}\n"
        "Observation,status:final,code:{Age when solids were started},valueQuantity:{value:5,unit:months,"
        "code:mo}\n"
        "RelatedPerson,relationship:[{text:Mother or guardian}],name:[{text:HARTLEY,ROSE}]\n"
        "Observation,status:final,code:{Infant feeding choice},encounter:visits 812 Visit 03/10/2026 14:30,"
        "effectiveDateTime:2026-03-10,valueCodeableConcept:{1/2 BREAST & 1/2 FORMULA}\n"
        "Observation,status:final,category:[{survey }],code:{Functional status},"
        "encounter:visits 81 Visit 03/10/2026 09:15,effectiveDateTime:2026-03-10,"
        "component:[{code:{Toileting},valueCodeableConcept:{INDEPENDENT}},{code:{Bathing},"
        "valueCodeableConcept:{NEEDS HELP}},{code:{Dressing},valueCodeableConcept:{TOTALLY DEPENDENT}},"
        "{code:{Housework},valueCodeableConcept:{NEEDS HELP}},"
        "{code:{Change in status since the last assessment},valueCodeableConcept:{DECLINE}},"
        "{code:{Patient is a caregiver to others},valueCodeableConcept:{YES}}]\n"
        "Observation,status:final,code:{Asthma severity},encounter:visits 81 Visit 03/10/2026,"
        "effectiveDateTime:2026-03-10,valueCodeableConcept:{426979002 MILD PERSISTENT}\n"
        "Observation,status:final,code:{FEV 1},encounter:visits 81 Visit 03/10/2026,"
        "effectiveDateTime:2026-03-10,valueInteger:90\n"
        "Observation,status:final,code:{FEF 25-75},encounter:visits 81 Visit 03/10/2026,"
        "effectiveDateTime:2026-03-10,valueInteger:80\n"
        "Observation,status:final,code:{PEF/Best PF},encounter:visits 81 Visit 03/10/2026,"
        "effectiveDateTime:2026-03-10,valueInteger:450\n"
        "Observation,status:final,code:{Asthma triggers and management plan},"
        "encounter:visits 81 Visit 03/10/2026,effectiveDateTime:2026-03-10,"
        "component:[{code:{Environmental tobacco smoke},valueBoolean:true},{code:{Particulates},"
        "valueBoolean:false},{code:{Dust mites},valueBoolean:true},{code:{Asthma management plan},"
        "valueBoolean:false}]\n"
        "Contract,issued:2026-02-01,author:providers 15 OAK,KIT J,type:{PAIN}\n"
        "Procedure,status:not-done,statusReason:{text:Refusal},category:{MEASUREMENTS},"
        "code:{text:BLOOD PRESSURE},performedDateTime:2026-03-10,note:[{text:Said �No}]\n"
        "Immunization,status:not-done,statusReason:{PATOBJ Refusal},vaccineCode:{text:INFLUENZA},"
        "occurrenceDateTime:2026-03\n"
        "Immunization,status:not-done,statusReason:{PATOBJ Refusal},vaccineCode:{text:immunization},"
        "_occurrenceDateTime:{extension:[{url:http://hl7.org/fhir/StructureDefinition/data-absent-reason,"
        "valueCode:unknown}]}\n"
        "MedicationStatement,status:not-taken,statusReason:[{text:Refusal}],"
        "medicationCodeableConcept:{text:ASPIRIN},effectiveDateTime:2026,note:[{text:why}]\n");
}

TEST_F(FhirExport, LeavesOutWhatIsNotThere)
{
    reply(L"MEVREP GET", L"G1234567890P02LCxSA3^soon^^12/00/2025^SONOGRAM^");
    reply(L"MEVBMSR GET", L"7^2^3.23^^^^^^^x^6M^M^xW");
    reply(L"MEVVELD GET", L"31^^3260310|0^^^^^^^^^^^^^^\r\n");
    reply(L"MEVVAST GET", L"3^^3260310|0^^90x^^^^^^\r\n4^^3260310|^^^^^^^^MAYBE\r\n");
    reply(L"MEVVTXC GET", L"45^^01/05/2026@10:00|81^^02/00/2026^\r\n");
    open(12, L"F", L"4");
    EXPECT_EQ(contents(fhir()),
        "Observation,status:final,code:{11977-6 Parity},valueInteger:2\n"
        "Observation,status:final,code:{8665-2 Last menstrual period},valueString:soon\n"
        "Observation,status:final,code:{Contraceptive method},component:[{code:{Date the method began},"
        "valueDateTime:2025-12}]\n"
        "Observation,status:final,code:{11778-8 Estimated delivery},dataAbsentReason:{unknown },"
        "method:{text:SONOGRAM}\n"
        "Observation,status:final,category:[{vital-signs }],code:{8339-4 Birth weight},"
        "valueQuantity:{value:3.23,unit:kg,code:kg}\n"
        "Observation,status:final,code:{Birth order},valueString:x\n"
        "Observation,status:final,code:{Age when formula was started},valueQuantity:{value:6,unit:months,"
        "code:mo}\n"
        "Observation,status:final,code:{Age when breastfeeding was stopped},valueString:M\n"
        "Observation,status:final,code:{Age when solids were started},valueString:xW\n"
        "Observation,status:final,code:{FEV 1},effectiveDateTime:2026-03-10,valueString:90x\n"
        "Observation,status:final,code:{Asthma triggers and management plan},effectiveDateTime:2026-03-10,"
        "component:[{code:{Asthma management plan},valueString:MAYBE}]\n"
        "Contract,issued:2026-02\n");
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
    for (const TextView wrong : { L"-7:00", L"UTC", L"+15:00", L"+14:30", L"+02:60", L"+02:00 " }) {
        host.site->zone = wrong;
        EXPECT_FALSE(has(fhir(), "T14:30")) << narrow(wrong);
    }
    host.site->zone = L"+14:00";
    reply(L"MEVVAST GET", L"3^^3260310.143005|81^MILD\r\n");
    reply(L"MEVREP GET", L"G1P0LC0SA0TA0^01/00/2026^^^^00/00/2026");
    push(L"REFRESH");
    EXPECT_TRUE(has(fhir(), "\"effectiveDateTime\":\"2026-03-10T14:30:05+14:00\""));
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
    for (const auto& [sex, gender] : { std::pair { L"F", "female" }, { L"M", "male" }, { L"U", "unknown" } }) {
        commitPatient(15, sex);
        EXPECT_TRUE(has(fhir(), std::string("\"gender\":\"") + gender + '"'));
    }
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
