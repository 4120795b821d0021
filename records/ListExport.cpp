#include "records/ListExport.h"

#include "control/GridLoader.h"
#include "control/kalmevRepHistCtrl.h"
#include "records/CsvExport.h"
#include "records/FhirExport.h"

namespace health {

ListExport::ListExport(
    kalmevRepHistCtrl& control, const std::vector<ListedRecord>& records, const std::vector<int>& rows)
{
    const Grid& list = control.fgData;
    if (control.listedPatient() == 0 || !list.isDrawing())
        return;
    ExportSubject subject = exportSubject(control.shared());
    if (subject.patient != control.listedPatient())
        return;
    m_subject = std::move(subject);
    m_records.listed = records.size();
    m_records.records.reserve(rows.size());
    for (const int row : rows)
        m_records.records.push_back(&records.at(static_cast<std::size_t>(row)));
    if (list.hint() != NoRecords)
        m_records.remark = list.hint();
}

std::vector<ExportedFile> ListExport::files(ExportFormat format, FhirChoices choices) const
{
    if (!isPossible())
        return {};
    const Text name = exportName(m_subject);
    if (format == ExportFormat::Fhir)
        return { { name + L".fhir.json", fhirBundle(m_subject, m_records, choices) } };
    std::vector<ExportedFile> files;
    for (CsvFile& file : csvFiles(m_subject, m_records))
        files.push_back({ name + L'-' + Text(file.kind) + L".csv", std::move(file.bytes) });
    return files;
}

}
