#pragma once

#include "records/FhirWriter.h"
#include "records/RecordList.h"

namespace health {

// Writes a record as resources: Observations, a Contract, or the statement that something was not done. A record whose
// values are all empty makes none.
void writeFhirRecord(FhirWriter& writer, const ListedRecord& record);

}
