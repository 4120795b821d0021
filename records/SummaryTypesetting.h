// The parts of a row's summary, by which a view sets captions off from values.
#pragma once

#include "records/RecordList.h"

#include <vector>

namespace health {

enum class SummaryPart {
    Day, // "03/10/2026"
    Time, // " 09:30", with the blank before it
    Colon, // ": " after day and time
    Caption, // "Severity"
    Equals,
    Value,
    Separator, // "; " between two fields
};

struct SummaryRun {
    SummaryPart part;
    TextView text; // never empty; a view into the summary
    bool isChanged = false; // a value that differs from the earlier record's
};

// Splits a summary into its runs; joined in their order they are the summary, letter for letter. The split follows the
// fields of the record's line, because values and comments may themselves contain "=" and "; ". `earlier`, if not null,
// is a record of the same type: values that both records have and that differ are marked as changed.
std::vector<SummaryRun> typeset(const ListedRecord& record, const ListedRecord* earlier = nullptr);

// For each record the index of the one before it in time among those of its type; -1 for the first one, and for records
// without a date. Records of one type with the same date are taken as listed from the latest to the earliest.
std::vector<int> earlierRecords(const std::vector<ListedRecord>& records, RecordTypeNumber type);

}
