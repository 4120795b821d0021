#include "records/FhirCodes.h"

#include "text/Letters.h"

#include <algorithm>
#include <array>

namespace health {

namespace {

using namespace items;

constexpr std::array Items { &Gravida, &Para, &LivingChildren, &SpontaneousAbortions, &InducedAbortions, &LastPeriod,
    &Contraception, &ContraceptionBegan, &PregnancyStatus, &EstimatedDelivery, &BirthWeight, &BirthOrder,
    &FormulaStarted, &BreastStopped, &SolidsStarted, &InfantFeeding, &FunctionalStatus, &AsthmaSeverity, &Fev1, &Fef,
    &Pef, &AsthmaAnswers, &TobaccoSmoke, &Particulates, &DustMites, &ManagementPlan, &Functions[0], &Functions[1],
    &Functions[2], &Functions[3], &Functions[4], &Functions[5], &Functions[6], &Functions[7], &Functions[8],
    &Functions[9], &Functions[10], &Functions[11], &Functions[12], &Functions[13] };

constexpr ValueCode Values[] = {
    { Choices::Feeding, L"EXCLUSIVE BREASTFEEDING", L"exclusive-breastfeeding", L"Exclusive breastfeeding", L"" },
    { Choices::Feeding, L"MOSTLY BREASTFEEDING", L"mostly-breastfeeding", L"Mostly breastfeeding", L"" },
    { Choices::Feeding, L"1/2 BREAST & 1/2 FORMULA", L"half-breast-half-formula", L"1/2 breast & 1/2 formula", L"" },
    { Choices::Feeding, L"MOSTLY FORMULA", L"mostly-formula", L"Mostly formula", L"" },
    { Choices::Feeding, L"FORMULA ONLY", L"formula-only", L"Formula only", L"" },
    { Choices::Level, L"INDEPENDENT", L"independent", L"Independent", L"" },
    { Choices::Level, L"NEEDS HELP", L"needs-help", L"Needs help", L"" },
    { Choices::Level, L"TOTALLY DEPENDENT", L"totally-dependent", L"Totally dependent", L"" },
    { Choices::Trend, L"SAME", L"same", L"Same", L"" },
    { Choices::Trend, L"IMPROVEMENT", L"improvement", L"Improvement", L"" },
    { Choices::Trend, L"DECLINE", L"decline", L"Decline", L"" },
    { Choices::YesNo, L"YES", L"yes", L"Yes", L"" },
    { Choices::YesNo, L"NO", L"no", L"No", L"" },
    { Choices::Severity, L"MILD INTERMITTENT", L"mild-intermittent", L"Mild intermittent", L"427679007" },
    { Choices::Severity, L"MILD PERSISTENT", L"mild-persistent", L"Mild persistent", L"426979002" },
    { Choices::Severity, L"MODERATE PERSISTENT", L"moderate-persistent", L"Moderate persistent", L"427295004" },
    { Choices::Severity, L"SEVERE PERSISTENT", L"severe-persistent", L"Severe persistent", L"426656000" },
    { Choices::Contract, L"PAIN", L"pain", L"Pain", L"" },
    { Choices::Contract, L"MENTAL HEALTH", L"mental-health", L"Mental health", L"" },
    { Choices::Contraception, L"EDUCATION ONLY", L"education-only", L"Education only", L"" },
    { Choices::Contraception, L"ORAL CONTRACEPTIVES", L"oral-contraceptives", L"Oral contraceptives", L"" },
    { Choices::Contraception, L"IUD", L"iud", L"IUD", L"" },
    { Choices::Contraception, L"SURGICAL STERILIZATION", L"surgical-sterilization", L"Surgical sterilization", L"" },
    { Choices::Contraception, L"BARRIER METHODS", L"barrier-methods", L"Barrier methods", L"" },
    { Choices::Contraception, L"PARTNER STERILIZED", L"partner-sterilized", L"Partner sterilized", L"" },
    { Choices::Contraception, L"NATURAL TECHNIQUES", L"natural-techniques", L"Natural techniques", L"" },
    { Choices::Contraception, L"MENOPAUSE", L"menopause", L"Menopause", L"" },
    { Choices::Contraception, L"NONE", L"no-method", L"None", L"" },
    { Choices::Contraception, L"OTHER", L"other-method", L"Other", L"" },
    { Choices::Contraception, L"HORMONAL IMPLANT", L"hormonal-implant", L"Hormonal implant", L"" },
    { Choices::Contraception, L"HORMONE INJECTION", L"hormone-injection", L"Hormone injection", L"" },
    { Choices::Contraception, L"ABSTINENCE", L"abstinence", L"Abstinence", L"" },
    { Choices::Pregnancy, L"PREGNANT", L"pregnant", L"Pregnant", L"77386006" },
    { Choices::Refused, L"EKG", L"refused-ekg", L"EKG", L"" },
    { Choices::Refused, L"EXAM", L"refused-exam", L"Exam", L"" },
    { Choices::Refused, L"IMMUNIZATION", L"refused-immunization", L"Immunization", L"" },
    { Choices::Refused, L"LAB", L"refused-lab", L"Lab", L"" },
    { Choices::Refused, L"MAMMOGRAM", L"refused-mammogram", L"Mammogram", L"" },
    { Choices::Refused, L"MEASUREMENTS", L"refused-measurement", L"Measurement", L"" },
    { Choices::Refused, L"MEDICATION/DRUG", L"refused-medication", L"Medication/drug", L"" },
    { Choices::Refused, L"PAP SMEAR", L"refused-pap-smear", L"PAP smear", L"" },
    { Choices::Refused, L"RADIOLOGY EXAM", L"refused-radiology-exam", L"Radiology exam", L"" },
    { Choices::Refused, L"SKIN TEST", L"refused-skin-test", L"Skin test", L"" },
    { Choices::Refused, L"EDUCATION TOPICS", L"refused-education", L"Education topic", L"" },
};

constexpr AgeUnitCode AgeUnitCodes[] = { { L'D', L"d", L"days" }, { L'W', L"wk", L"weeks" }, { L'M', L"mo", L"months" },
    { L'Y', L"a", L"years" } };

}

std::span<const ItemCode* const> itemCodes() { return Items; }

std::span<const ValueCode> valueCodes() { return Values; }

const ValueCode* valueCode(Choices choices, TextView stored)
{
    const auto* const found = std::find_if(std::begin(Values), std::end(Values),
        [&](const ValueCode& value) { return value.choices == choices && equalIgnoringCase(value.stored, stored); });
    return found == std::end(Values) ? nullptr : found;
}

const AgeUnitCode* ageUnitCode(wchar_t letter)
{
    const auto* const found = std::find_if(std::begin(AgeUnitCodes), std::end(AgeUnitCodes),
        [&](const AgeUnitCode& unit) { return unit.letter == upperLetter(letter); });
    return found == std::end(AgeUnitCodes) ? nullptr : found;
}

}
