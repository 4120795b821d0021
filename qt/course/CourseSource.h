#pragma once

#include "records/RecordList.h"
#include "text/Dates.h"

#include <span>

namespace health {

class ShownRecords;

// What the course of a kind of record is made of.
struct CourseSource {
    std::span<const ListedRecord> records; // all listed ones
    int selected = -1; // the record whose kind is drawn; marked in the picture
    Moment now; // the user's clock
    Text registryDue; // the asthma registry's "Calculated Date Due" as last read in this session; empty if never
    Text birthDate {}; // the patient's, "1996-04-02", as the host tells it; empty if unknown
};

// What the course of the selected record's kind is made of. It refers to the records.
CourseSource courseSource(const ShownRecords& records);

}
