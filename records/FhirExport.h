// The listed records as FHIR R4 (4.0.1).
#pragma once

#include "records/FhirWriter.h"

namespace health {

// A Bundle of type "collection" in JSON, UTF-8: the patient, then the records in their order; docs/export.md says what
// they become. If they are not all records, the Bundle says so. The same records always make the same bytes.
std::string fhirBundle(const ExportSubject& subject, const ExportedRecords& exported, FhirChoices choices = {});

}
