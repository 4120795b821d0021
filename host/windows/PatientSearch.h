#pragma once

#include "api/host.h"
#include "host/framework/Selection.h"
#include "host/windows/ListPicker.h"

namespace health {

// Searches patients by the beginning of their name or by their number. The rows of its results are for a picker: name,
// number, sex, birth date, age.
class PatientSearch {
public:
    // The session must outlive the search.
    explicit PatientSearch(Session& session)
        : m_session(session)
    {
    }

    static QStringList headings();

    static ListPicker::Row row(const PatientData& patient, const QDate& today);

    // At most 250 rows, sorted by name; their keys are the patients' numbers. Throws Failure.
    QList<ListPicker::Row> rows(const QString& text, const QDate& today) const;

private:
    Session& m_session;
};

}
