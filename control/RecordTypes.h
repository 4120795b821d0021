// The types of record, and how they differ.
#pragma once

#include "api/RecordTypeNumber.h"
#include "control/EditKeys.h"
#include "text/Pieces.h"

#include <span>

namespace health {

// The facts that determine which records a patient can have.
struct PatientFacts {
    long number = 0;
    Text sex;
    double age = 0; // years

    bool isFemale() const { return sex == L"F"; }
    // Birth measurements and infant feeding are listed below this age.
    bool isYoungChild() const { return age < 7; }
};

// Which users may change records of a type.
enum class EditRule {
    PermissionMessage, // users without a PermissionMessage; no key overrides it
    Key, // holders of the type's own key or of PROVIDER
    Everybody,
};

// One field of a summary: its caption (if empty, only the value is shown) and the "^"-piece of the record line.
struct SummaryField {
    TextView caption;
    PieceNumber piece;
};

struct RecordType {
    RecordTypeNumber number;
    TextView listText; // in the list of types that can be added
    TextView rowLabel;
    TextView rowKey; // the whole key, or, if it ends with "^", the prefix of the record's id
    TextView callPrefix; // of the calls, before " GET", " SET" and " DEL"
    bool (*isListed)(const PatientFacts&);
    bool (*isOffered)(const PatientFacts&); // for adding
    EditRule editRule;
    EditKey editKey; // for EditRule::Key
    TextView keyInRefusal; // for editRefusal. Intended: for one type it differs from the real key
    bool needsVisit; // a new record belongs to a visit
    std::span<const SummaryField> fields;

    int code() const { return static_cast<int>(number); }
    // A patient has at most one record of the type, which has no number of its own.
    bool isOnePerPatient() const { return !rowKey.ends_with(L'^'); }
};

// All types, in the order of their numbers.
std::span<const RecordType> recordTypes();

// The type with this number; null for an unknown number.
const RecordType* recordType(int number);
const RecordType& recordType(RecordTypeNumber number);

}
