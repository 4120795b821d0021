#pragma once

#include "api/Component.h"
#include "host/framework/HostObjects.h"

#include <QObject>

#include <functional>
#include <vector>

namespace health {

// The session, and the selected patient and visit: the only place that changes them and notifies the components. The
// framework's entry point for components.
class ClinicalContext : public QObject, public Host {
    Q_OBJECT
public:
    // Functions that ask the user or show something. The default ones, for a host without a window, do nothing.
    struct Prompts {
        std::function<void()> choosePatient = [] {};
        std::function<void()> chooseVisit = [] {};
        std::function<void(const Report& report)> showReport = [](const Report&) {};
        std::function<void(Printout& pages)> showPages = [](Printout&) {};
    };

    // The transport must outlive the context.
    ClinicalContext(Transport& transport, int timeoutMilliseconds, HostSession::TryAgain tryAgain, Prompts prompts);

    HostSession& session() { return *m_session; }
    const PatientData& patient() const { return m_patient->data; }
    const VisitData& visit() const { return m_encounter->data; }

    std::unique_ptr<HostManager> createManager() override;

    // Components that are notified of changes; each must be removed before it is destroyed.
    void add(ComponentInstance& component) { m_components.push_back(&component); }
    void remove(ComponentInstance& component) { std::erase(m_components, &component); }

    // False while a dialog is open, a call runs or a change is in progress: patient, visit and user must not change
    // then.
    bool mayChange() const;

    // Selects a patient (0: none) without a visit; false if a component vetoes or if mayChange() is false. All
    // components release the former patient before any of them is notified of the new one. Throws Failure for an
    // unknown patient, and changes nothing then.
    bool selectPatient(long number);
    // Selects a visit of the patient (number 0: none); false as above.
    bool selectVisit(const VisitData& visit);

Q_SIGNALS:
    void patientChanged();
    // All components have been notified of the selected patient.
    void patientCommitted();
    void visitChanged();

private:
    PatientData readPatient(long number);
    template<typename Events>
    bool isAcceptedByAll(Events events);
    void commitPatient(const PatientData& patient);
    void commitVisit();

    std::shared_ptr<HostSession> m_session;
    std::shared_ptr<HostPatient> m_patient;
    std::shared_ptr<HostEncounter> m_encounter;
    std::shared_ptr<HostPrintPreview> m_print;
    std::vector<ComponentInstance*> m_components;
    bool m_changing = false; // from asking the first component to notifying the last one
};

}
