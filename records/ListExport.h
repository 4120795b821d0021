// The list's records as files, and what is said about them.
#pragma once

#include "api/Component.h"
#include "records/FhirWriter.h"

namespace health {

class kalmevRepHistCtrl;

// The records of the list in these rows, in this order. Empty if the list shows no patient, or not the host's.
// Throws what the host's objects throw.
class ListExport {
public:
    // `records` are all of the list (listedRecords()), `rows` indices of them. All must outlive the object.
    ListExport(kalmevRepHistCtrl& control, const std::vector<ListedRecord>& records, const std::vector<int>& rows);

    // The list shows the patient whom the host has selected.
    bool isPossible() const { return m_subject.patient != 0; }
    const ExportedRecords& records() const { return m_records; }
    std::vector<ExportedFile> files(ExportFormat format, FhirChoices choices = {}) const;

private:
    ExportSubject m_subject;
    ExportedRecords m_records;
};

}
