// A record's fields one by one, for reading it in full.
#pragma once

#include "records/RecordList.h"

#include <span>
#include <vector>

namespace health {

struct RecordField {
    Text caption; // as the record's form names it
    Text value; // as the summary shows it; empty if only the record before has one
    Text before; // the value of the record before if it has another one; otherwise empty
};

// The fields that the record, or the one before, has. `before` may be null.
std::vector<RecordField> recordFields(const ListedRecord& record, const ListedRecord* before);

// The latest record of the same kind that is certainly earlier than this one. Null for refusals, each of which is about
// an item of its own, for a kind with one record per patient, and without a readable date.
const ListedRecord* recordBefore(std::span<const ListedRecord> records, std::size_t index);

// The date at the beginning of the record's summary, as the summary shows it.
Text shownDate(const ListedRecord& record);

}
