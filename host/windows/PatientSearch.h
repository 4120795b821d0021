#pragma once

#include "api/host.h"
#include "host/windows/ListPicker.h"

namespace health {

// Patients by the beginning of their name or by their number, as rows of a picker: name, number, sex, birth date, age.
class PatientSearch {
public:
    // The session must outlive the search.
    explicit PatientSearch(Session& session)
        : m_session(session)
    {
    }

    static QStringList headings();

    // At most 250 rows, by name; their keys are the patients' numbers. Throws Failure.
    QList<ListPicker::Row> rows(const QString& text, const QDate& today) const;

private:
    Session& m_session;
};

}
