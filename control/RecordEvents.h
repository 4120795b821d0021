#pragma once

#include "shared/modShared.h"

namespace health {

// The control's subscriptions to session events: changes of the patient's records, REFRESH and CONNECTION.
class RecordEvents {
public:
    // Reports failures under the module's name. All three must outlive the object; the sink must outlive the
    // subscriptions.
    RecordEvents(modShared& shared, TextView module, ICSS_SessionEvents& sink)
        : m_shared(shared)
        , m_module(module)
        , m_sink(sink)
    {
    }

    // Subscribe. Throw what the session throws.
    void followPatient(long patientNumber);
    void followRefresh();
    void followConnection();

    // Unsubscribe; a failure is reported under the procedure's name.
    void leavePatient(TextView procedure);
    void leaveRefresh(TextView procedure);
    void leaveConnection(TextView procedure);

    // True from followPatient, even a failed one, to leavePatient.
    bool hasPatient() const { return !m_visitEventName.empty(); }
    // The event requires a reload.
    bool concerns(TextView eventName) const;
    // The kind of record, such as "VAST", that another session has changed according to an event that concerns() the
    // panel; empty for this session's own changes and for REFRESH.
    static TextView changedByOthers(TextView eventName, TextView data);

private:
    modShared& m_shared;
    TextView m_module;
    ICSS_SessionEvents& m_sink;
    bool m_refreshRegistered = false;
    bool m_connectionRegistered = false;
    Text m_visitEventName; // with the patient number; empty without a patient
    Text m_refusalEventName; // likewise
};

}
