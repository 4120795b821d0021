#include "control/RecordTypes.h"

#include <array>

namespace health {

namespace {

constexpr std::array<SummaryField, 4> ReproductiveFields { {
    { L"LMP", 2 },
    { L"Contraceptive Method", 3 },
    { L"Pregnant: Est. Delivery", 6 },
    { L"Determined by", 5 },
} };

constexpr std::array<SummaryField, 1> FeedingFields { { { L"", 4 } } };

constexpr std::array<SummaryField, 5> BirthFields { {
    { L"Birth Order", 10 },
    { L"Formula Started", 11 },
    { L"Breast Stopped", 12 },
    { L"Solids Started", 13 },
    { L"Mother", 14 },
} };

constexpr std::array<SummaryField, 14> FunctionalFields { {
    { L"Status Change", 16 },
    { L"Caregiver", 17 },
    { L"Toileting", 4 },
    { L"Bathing", 5 },
    { L"Dressing", 6 },
    { L"Transfers", 7 },
    { L"Feeding", 8 },
    { L"Continence", 9 },
    { L"Finances", 10 },
    { L"Cooking", 11 },
    { L"Shopping", 12 },
    { L"Chores", 13 },
    { L"Meds", 14 },
    { L"Transportation", 15 },
} };

constexpr std::array<SummaryField, 8> AsthmaFields { {
    { L"Severity", 4 },
    { L"FEV", 5 },
    { L"FEF", 6 },
    { L"PEF", 7 },
    { L"ETS", 8 },
    { L"Particulates", 9 },
    { L"Dust Mites", 10 },
    { L"Mgt. Plan", 11 },
} };

constexpr std::array<SummaryField, 3> ContractFields { {
    { L"Initiated", 5 },
    { L"Type", 4 },
    { L"Provider", 6 },
} };

constexpr std::array<SummaryField, 11> EmergencyFields { {
    { L"Urgency", 4 },
    { L"Means of Arrival", 5 },
    { L"Other Means", 6 },
    { L"Entered ER by", 7 },
    { L"Informant", 8 },
    { L"Notified", 9 },
    { L"Disposition", 10 },
    { L"Other Disposition", 11 },
    { L"Departure Date", 12 },
    { L"Discharge Condition", 13 },
    { L"Transferred to", 14 },
} };

bool ofWomen(const PatientFacts& patient) { return patient.isFemale(); }
bool always(const PatientFacts&) { return true; }
bool never(const PatientFacts&) { return false; }
bool ofChildbearingAge(const PatientFacts& patient) { return patient.isFemale() && patient.age > 8; }
bool ofFeedingAge(const PatientFacts& patient) { return patient.age < 5; }
bool youngChild(const PatientFacts& patient) { return patient.isYoungChild(); }

using enum RecordTypeNumber;

// Intended: the emergency room type has a format but is neither listed nor offered. GridLoader builds the summary of a
// refusal without fields.
constexpr std::array<RecordType, 8> Types { {
    { Reproductive, L"Reproductive History", L"Reproductive", L"REPR", L"MEVREP", ofWomen, ofChildbearingAge,
        EditRule::PermissionMessage, {}, L"", false, ReproductiveFields },
    { InfantFeeding, L"Infant Feeding", L"Infant Feeding", L"IF^", L"MEVVIF", youngChild, ofFeedingAge, EditRule::Key,
        EditKey::Pediatric, L"MEVZ PEDIATRIC EDIT", true, FeedingFields },
    { BirthMeasurements, L"Birth Measurements", L"Birth Measurements", L"BMSR", L"MEVBMSR", youngChild, youngChild,
        EditRule::Key, EditKey::Pediatric, L"MEVZ PEDIATRIC EDIT", false, BirthFields },
    { FunctionalStatus, L"Functional Status", L"Functional Status", L"FS^", L"MEVVELD", always, always, EditRule::Key,
        EditKey::Elder, L"MEVZ ELDER CARE EDIT", true, FunctionalFields },
    { Asthma, L"Asthma Status", L"Asthma Status", L"AS^", L"MEVVAST", always, always, EditRule::Key, EditKey::Asthma,
        L"MEVZ ASTHMA EDIT", true, AsthmaFields },
    { TreatmentContract, L"Treatment Contract", L"Tx Contract", L"TXC^", L"MEVVTXC", always, always, EditRule::Key,
        EditKey::TxContract, L"MEVZ TX CONTRACT EDIT", true, ContractFields },
    { Refusal, L"Refusal", L"Refusal", L"REF^", L"MEVREF", always, always, EditRule::Everybody, {}, L"", false, {} },
    { EmergencyRoom, L"", L"ER Visit", L"ER^", L"MEVVER", never, never, EditRule::Key, EditKey::Er, L"MEVZ ER EDIT",
        true, EmergencyFields },
} };

}

std::span<const RecordType> recordTypes() { return Types; }

const RecordType* recordType(int number)
{
    const bool known = number >= 1 && number <= static_cast<int>(Types.size());
    return known ? &Types[static_cast<std::size_t>(number - 1)] : nullptr;
}

const RecordType& recordType(RecordTypeNumber number) { return *recordType(static_cast<int>(number)); }

}
