#include "shared/SharedObjects.h"

#include "api/ProgIds.h"

#include "text/Conversions.h"

namespace health {

void SharedObjects::obtain(Host& host)
{
    m_session = host.createManager()->session();
    m_application = session().object(ApplicationProgId);
    const bool alone = m_application == nullptr;
    if (alone && !m_session->isConnected())
        m_session->connect(L"");
    m_patient = objectOf<Patient>(PatientProgId);
    m_user = objectOf<User>(UserProgId);
    m_site = objectOf<Site>(SiteProgId);
    m_encounter = objectOf<Encounter>(EncounterProgId);
    m_print = objectOf<PrintPreview>(PrintProgId);
    if (alone)
        promptForContext();
}

template<typename Object>
std::shared_ptr<Object> SharedObjects::objectOf(TextView progId)
{
    auto object = std::dynamic_pointer_cast<Object>(m_session->object(progId));
    if (!object)
        throw Failure(L"The host has no object \"" + Text(progId) + L"\".");
    return object;
}

// Inside the host application, the application asks the user for these.
void SharedObjects::promptForContext()
{
    if (!m_patient->isSelected())
        m_patient->select();
    if (!m_encounter->isValid())
        m_encounter->prompt(1);
}

void SharedObjects::release()
{
    m_print.reset();
    m_encounter.reset();
    m_site.reset();
    m_user.reset();
    m_patient.reset();
    m_application.reset();
    m_session.reset();
}

Text SharedObjects::patientText() const { return wholeText(patient().number()); }

}
