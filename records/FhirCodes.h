// The one table of the codes that exports use. Codes of public systems are only those that are certain; everything
// else has a code of the panel's own system.
#pragma once

#include "api/Text.h"

#include <span>

namespace health {

// The panel's own code system. A reserved domain until the project owns one.
inline constexpr TextView LocalCodes = L"https://personal-health.example/codes";
inline constexpr TextView Loinc = L"http://loinc.org";
inline constexpr TextView Snomed = L"http://snomed.info/sct";
inline constexpr TextView UnitsOfMeasure = L"http://unitsofmeasure.org";

// What an Observation, or a component of one, is about.
struct ItemCode {
    TextView code; // of LocalCodes
    TextView display;
    TextView loinc; // empty without a certain one
};

namespace items {
inline constexpr ItemCode Gravida { L"gravida", L"Gravidity", L"11996-6" };
inline constexpr ItemCode Para { L"para", L"Parity", L"11977-6" };
inline constexpr ItemCode LivingChildren { L"living-children", L"Living children", L"11638-4" };
inline constexpr ItemCode SpontaneousAbortions { L"spontaneous-abortions", L"Spontaneous abortions", L"11614-5" };
inline constexpr ItemCode InducedAbortions { L"induced-abortions", L"Therapeutic abortions", L"11613-7" };
inline constexpr ItemCode LastPeriod { L"last-period", L"Last menstrual period", L"8665-2" };
inline constexpr ItemCode Contraception { L"contraception", L"Contraceptive method", L"" };
inline constexpr ItemCode ContraceptionBegan { L"contraception-began", L"Date the method began", L"" };
inline constexpr ItemCode PregnancyStatus { L"pregnancy-status", L"Pregnancy status", L"82810-3" };
inline constexpr ItemCode EstimatedDelivery { L"estimated-delivery", L"Estimated delivery", L"11778-8" };
inline constexpr ItemCode BirthWeight { L"birth-weight", L"Birth weight", L"8339-4" };
inline constexpr ItemCode BirthOrder { L"birth-order", L"Birth order", L"" };
inline constexpr ItemCode FormulaStarted { L"formula-started", L"Age when formula was started", L"" };
inline constexpr ItemCode BreastStopped { L"breast-stopped", L"Age when breastfeeding was stopped", L"" };
inline constexpr ItemCode SolidsStarted { L"solids-started", L"Age when solids were started", L"" };
inline constexpr ItemCode InfantFeeding { L"infant-feeding", L"Infant feeding choice", L"" };
inline constexpr ItemCode FunctionalStatus { L"functional-status", L"Functional status", L"" };
inline constexpr ItemCode AsthmaSeverity { L"asthma-severity", L"Asthma severity", L"" };
// Without a public code: nothing states their units.
inline constexpr ItemCode Fev1 { L"fev-1", L"FEV 1", L"" };
inline constexpr ItemCode Fef { L"fef-25-75", L"FEF 25-75", L"" };
inline constexpr ItemCode Pef { L"pef", L"PEF/Best PF", L"" };
inline constexpr ItemCode AsthmaAnswers { L"asthma-triggers-and-plan", L"Asthma triggers and management plan", L"" };
inline constexpr ItemCode TobaccoSmoke { L"tobacco-smoke", L"Environmental tobacco smoke", L"" };
inline constexpr ItemCode Particulates { L"particulates", L"Particulates", L"" };
inline constexpr ItemCode DustMites { L"dust-mites", L"Dust mites", L"" };
inline constexpr ItemCode ManagementPlan { L"management-plan", L"Asthma management plan", L"" };
// In the order of the record's pieces.
inline constexpr ItemCode Functions[] = {
    { L"toileting", L"Toileting", L"" },
    { L"bathing", L"Bathing", L"" },
    { L"dressing", L"Dressing", L"" },
    { L"transfers", L"Transfers", L"" },
    { L"feeding", L"Feeding", L"" },
    { L"continence", L"Continence", L"" },
    { L"finances", L"Finances", L"" },
    { L"cooking", L"Cooking", L"" },
    { L"shopping", L"Shopping", L"" },
    { L"housework", L"Housework", L"" },
    { L"medications", L"Medications", L"" },
    { L"transportation", L"Transportation", L"" },
    { L"change-in-status", L"Change in status since the last assessment", L"" },
    { L"caregiver", L"Patient is a caregiver to others", L"" },
};
}

// All of them.
std::span<const ItemCode* const> itemCodes();

// The choices that records store.
enum class Choices {
    Feeding,
    Level,
    Trend,
    YesNo,
    Severity,
    Contract,
    Contraception,
    Pregnancy,
    Refused,
};

struct ValueCode {
    Choices choices;
    TextView stored; // the text of the record, in any case
    TextView code; // of LocalCodes
    TextView display;
    TextView snomed; // empty without a certain one
};

std::span<const ValueCode> valueCodes();

// The code of a stored text; null if the text is not one of the choices.
const ValueCode* valueCode(Choices choices, TextView stored);

// The unit in which a child's age is stored: D, W, M or Y.
struct AgeUnitCode {
    wchar_t letter;
    TextView code; // of UnitsOfMeasure
    TextView word;
};
// Null for any other letter.
const AgeUnitCode* ageUnitCode(wchar_t letter);

}
