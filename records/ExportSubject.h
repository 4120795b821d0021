// What exports write about the patient and the site, beside the records.
#pragma once

#include "records/RecordList.h"
#include "text/Dates.h"

#include <functional>

namespace health {

class modShared;

struct ExportSubject {
    long patient = 0; // 0: none
    Text name; // as people read it
    Text sex; // "F", "M" or another code of the host
    Text birthDate; // "yyyy-mm-dd", possibly shortened; empty if unknown
    // The URL below which the site's numbers are unique, without a "/" at its end.
    Text identifiers;
    // The offset from UTC at a local time of the records, such as "-07:00"; empty if unknown.
    std::function<Text(Moment)> zoneOffset = [](Moment) { return Text(); };
    Moment now {};
};

// Asks the host's objects, which must outlive the result. Throws what they throw.
ExportSubject exportSubject(modShared& shared);

// The records that an export writes.
struct ExportedRecords {
    std::vector<const ListedRecord*> records; // in the order of the list
    std::size_t listed = 0; // the number of all records in the list, shown or not
    Text remark; // why the list itself is incomplete; empty if it is complete

    bool areAll() const { return records.size() == listed; }
    // "12 records", "3 of 12 records".
    Text extent() const;
};

// "patient-12": the beginning of the names of exported files.
Text exportName(const ExportSubject& subject);

}
