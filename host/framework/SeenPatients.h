#pragma once

#include "host/framework/HostObjects.h"

#include <QList>

namespace health {

// The patients that a user has selected in this session, in memory only.
class SeenPatients {
public:
    static constexpr qsizetype Most = 12;

    // A patient number of 0 means no patient.
    void note(const Text& user, const PatientData& patient)
    {
        forgetOthers(user);
        if (patient.number == 0)
            return;
        m_patients.removeIf([&](const PatientData& seen) { return seen.number == patient.number; });
        m_patients.prepend(patient);
        m_patients.resize(std::min(m_patients.size(), Most));
    }

    // The latest first. Another user's patients are forgotten for good.
    const QList<PatientData>& of(const Text& user)
    {
        forgetOthers(user);
        return m_patients;
    }

private:
    void forgetOthers(const Text& user)
    {
        if (m_user != user)
            m_patients.clear();
        m_user = user;
    }

    Text m_user;
    QList<PatientData> m_patients;
};

}
