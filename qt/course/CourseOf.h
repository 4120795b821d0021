#pragma once

#include "qt/course/CoursePicture.h"
#include "records/RecordList.h"
#include "text/Dates.h"

#include <memory>
#include <span>

namespace health {

// What the course of a kind of record is made of.
struct CourseSource {
    std::span<const ListedRecord> records; // all listed ones
    int selected = -1; // the record whose kind is drawn; marked in the picture
    Moment now; // the user's clock
    Text registryDue; // the asthma registry's "Calculated Date Due" as last read in this session; empty if never
    Text birthDate {}; // the patient's, "1996-04-02", as the host tells it; empty if unknown
};

// The picture for the selected record's kind; null for a kind without one, and without a selected record.
std::unique_ptr<CoursePicture> courseOf(const CourseSource& source);

}
