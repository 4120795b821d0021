#pragma once

#include "api/Component.h"
#include "host/framework/HostObjects.h"

#include <QObject>

#include <vector>

namespace health {

// Who is signed on, which patient and which visit are selected: the one place that changes them, and tells the
// components. The framework's entrance for components.
class ClinicalContext : public QObject, public Host {
    Q_OBJECT
public:
    ClinicalContext(Transport& transport, int timeoutMilliseconds, HostSession::TryAgain tryAgain);

    HostSession& session() { return *m_session; }
    const PatientData& patient() const { return m_patient->data; }
    const VisitData& visit() const { return m_encounter->data; }
    HostPatient& patientObject() { return *m_patient; }
    HostEncounter& encounterObject() { return *m_encounter; }
    HostPrintPreview& printObject() { return *m_print; }

    std::unique_ptr<HostManager> createManager() override;

    // Components that are told of changes; they must be taken off before they go.
    void add(ComponentInstance& component) { m_components.push_back(&component); }
    void remove(ComponentInstance& component) { std::erase(m_components, &component); }

    // False while a dialog is open, a call runs or a change is being told: nobody may change patient, visit or user
    // then.
    bool mayChange() const;

    // Selects a patient (0: none) without a visit; false when a component vetoes, or when nobody may change it just
    // now. All components let go of the former patient before any of them hears of the new one. Throws Failure for an
    // unknown one; nothing has changed then.
    bool selectPatient(long number);
    // Selects a visit of the patient; number 0: none. False as above.
    bool selectVisit(const VisitData& visit);

Q_SIGNALS:
    void patientChanged();
    // All components have been told of the patient that was selected.
    void patientTold();
    void visitChanged();

private:
    PatientData readPatient(long number);
    template<typename Events>
    bool suitsAll(Events events);
    void tellPatient(const PatientData& patient);
    void tellVisit();

    std::shared_ptr<HostSession> m_session;
    std::shared_ptr<HostPatient> m_patient;
    std::shared_ptr<HostEncounter> m_encounter;
    std::shared_ptr<HostPrintPreview> m_print;
    std::vector<ComponentInstance*> m_components;
    bool m_changing = false; // from the first component's question to the last one's news
};

}
