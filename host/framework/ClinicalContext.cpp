#include "host/framework/ClinicalContext.h"

#include "api/ProgIds.h"
#include "host/framework/DisplayText.h"
#include "host/session/Replies.h"
#include "host/session/Transport.h"

#include <QApplication>
#include <QScopedValueRollback>

#include <algorithm>

namespace health {

namespace {

class Manager : public HostManager {
public:
    explicit Manager(std::shared_ptr<Session> session)
        : m_session(std::move(session))
    {
    }
    std::shared_ptr<Session> session() override { return m_session; }

private:
    std::shared_ptr<Session> m_session;
};

}

ClinicalContext::ClinicalContext(
    Transport& transport, int timeoutMilliseconds, HostSession::TryAgain tryAgain, Prompts prompts)
    : m_session(std::make_shared<HostSession>(transport, timeoutMilliseconds, std::move(tryAgain)))
    , m_patient(std::make_shared<HostPatient>(std::move(prompts.choosePatient)))
    , m_encounter(std::make_shared<HostEncounter>(std::move(prompts.chooseVisit)))
    , m_print(std::make_shared<HostPrintPreview>(std::move(prompts.showReport), std::move(prompts.showPages)))
{
    m_session->setObject(ApplicationProgId, std::make_shared<HostApplication>());
    m_session->setObject(PatientProgId, m_patient);
    m_session->setObject(UserProgId, std::make_shared<HostUser>(*m_session));
    m_session->setObject(SiteProgId, std::make_shared<HostSite>(*m_session, transport.hasLocalClock()));
    m_session->setObject(EncounterProgId, m_encounter);
    m_session->setObject(PrintProgId, m_print);
}

std::unique_ptr<HostManager> ClinicalContext::createManager() { return std::make_unique<Manager>(m_session); }

bool ClinicalContext::mayChange() const
{
    return !m_changing && !m_session->isInCall() && !QApplication::activeModalWidget();
}

PatientData ClinicalContext::readPatient(long number)
{
    if (number == 0)
        return {};
    const auto lines = linesOf(m_session->callText(L"MEVHOST PATIENT", std::to_wstring(number)));
    const QStringList pieces = lines.value(0);
    if (pieces.value(0).toLong() != number)
        throw Failure(L"The server did not reply with patient " + std::to_wstring(number) + L".");
    return { number, pieces.value(1), pieces.value(2), pieces.value(3), dateOfFileMan(pieces.value(3)).date() };
}

// Asks all components whether they accept the change; if one vetoes, notifies all of the cancellation.
template<typename Events>
bool ClinicalContext::isAcceptedByAll(Events events)
{
    const auto vetoes = [&](ComponentInstance* component) { return events(*component).Pending(); };
    if (std::none_of(m_components.begin(), m_components.end(), vetoes))
        return true;
    for (ComponentInstance* component : m_components)
        events(*component).Canceled();
    return false;
}

bool ClinicalContext::selectPatient(long number)
{
    // A box that a component shows while it loads runs the event loop; a second change there would reach the component
    // before it has released the first patient.
    if (!mayChange())
        return false;
    const QScopedValueRollback changing(m_changing, true);
    const PatientData data = readPatient(number);
    if (!isAcceptedByAll([](ComponentInstance & component) -> auto& { return component.patientEvents(); }))
        return false;
    // Otherwise, while a loading component shows a box, the others would show the former patient's records under the
    // new name.
    commitPatient({});
    if (data.number != 0)
        commitPatient(data);
    commitVisit();
    Q_EMIT patientCommitted();
    return true;
}

void ClinicalContext::commitPatient(const PatientData& patient)
{
    m_patient->data = patient;
    m_encounter->data = {};
    Q_EMIT patientChanged();
    // A copy: components may be added and removed while one of them shows a box.
    for (ComponentInstance* component : std::vector(m_components)) {
        if (std::find(m_components.begin(), m_components.end(), component) != m_components.end())
            component->patientEvents().Committed();
    }
}

bool ClinicalContext::selectVisit(const VisitData& visit)
{
    if (!mayChange())
        return false;
    const QScopedValueRollback changing(m_changing, true);
    if (!isAcceptedByAll([](ComponentInstance & component) -> auto& { return component.encounterEvents(); }))
        return false;
    m_encounter->data = visit;
    commitVisit();
    return true;
}

void ClinicalContext::commitVisit()
{
    Q_EMIT visitChanged();
    for (ComponentInstance* component : std::vector(m_components)) {
        if (std::find(m_components.begin(), m_components.end(), component) != m_components.end())
            component->encounterEvents().Committed();
    }
}

}
