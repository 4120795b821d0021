// The list's records as views, for units that read the list and change nothing.
#pragma once

#include "control/RecordTypes.h"

#include <vector>

namespace health {

class kalmevRepHistCtrl;

// One row of the list. The views are valid until the list is loaded again.
struct ListedRecord {
    const RecordType* type = nullptr; // never null
    TextView line; // as the server sent it: "^"-pieces, whose numbers are those of RecordType::fields
    TextView key; // identifies the row across reloads
    TextView label;
    TextView summary;
    TextView record; // the record's number; the patient's number for types with one record per patient
    TextView visit; // the visit's number; empty without one
    bool isLocked = false; // may not be edited
    bool isOfCurrentVisit = false;
};

// The records in the order of the grid's rows: the element's index is the grid's row. Empty without a patient and
// while the list is loading.
std::vector<ListedRecord> listedRecords(const kalmevRepHistCtrl& control);

// The date at the beginning of the record's summary as the server sent it: "yyymmdd", "yyymmdd.hhmm" with year minus
// 1700, month and day possibly "00". Empty for a type without a date, or a record without one.
TextView recordDate(const ListedRecord& record);

}
