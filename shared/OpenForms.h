#pragma once

#include "api/Text.h"

#include <vector>

namespace health {

// An open form that shows a patient's record.
class FormWatcher {
public:
    // The host has selected another patient, or none.
    virtual void patientChanged() = 0;
    // Another session has changed records of the form's patient. `kind` is the end of the event's name, such as "VAST".
    virtual void recordsChanged(TextView kind) = 0;

protected:
    ~FormWatcher() = default;
};

// The open forms. The control reports to them what the host tells it.
class OpenForms {
public:
    void addForm(FormWatcher& form) { m_forms.push_back(&form); }
    void removeForm(FormWatcher& form) { std::erase(m_forms, &form); }

    void notifyPatientChanged() const
    {
        for (FormWatcher* const form : m_forms)
            form->patientChanged();
    }
    void notifyRecordsChanged(TextView kind) const
    {
        for (FormWatcher* const form : m_forms)
            form->recordsChanged(kind);
    }

private:
    std::vector<FormWatcher*> m_forms;
};

}
