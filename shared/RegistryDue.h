#pragma once

#include "api/Text.h"

namespace health {

// When the patient's asthma registry entry says that the next asthma visit is due, as a form last read it. For readers
// that make no call themselves; never stored.
class RegistryDue {
public:
    // `due` is the date as the server sent it; empty if the entry is not active or has none.
    void noteRegistryDue(TextView patient, TextView due)
    {
        m_patient = patient;
        m_due = due;
    }
    // The host has selected another patient, or none.
    void forgetRegistryDue() { noteRegistryDue({}, {}); }

    // Empty if no form has read the patient's entry since the patient was selected.
    TextView registryDue(TextView patient) const { return patient == m_patient ? TextView(m_due) : TextView(); }

private:
    Text m_patient;
    Text m_due;
};

}
