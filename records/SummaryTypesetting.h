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

// For each record of the type the index of the latest one that is certainly earlier (see isBefore); -1 without one, and
// for records without a readable date.
std::vector<int> earlierRecords(const std::vector<ListedRecord>& records, RecordTypeNumber type);

}
