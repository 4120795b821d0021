// modShared: the host's objects, obtained once per process and counted by the control's instances.
#include "shared/modShared.h"

#include "api/ProgIds.h"

#include "shared/frmDummy.h"
#include "shared/modConst.h"
#include "text/Conversions.h"

#include <limits>

namespace health {

bool modShared::InitObjects(Host& host, bool reload)
{
    bool counted = false;
    trap(L"modShared", L"InitObjects", [&] {
        if (reload) {
            frmDummy dummy;
            m_desktop.load(dummy);
            m_desktop.unload(dummy);
        }
        if (m_instanceCount == std::numeric_limits<short>::max())
            throw Failure(L"Overflow");
        ++m_instanceCount;
        counted = true;
        if (m_instanceCount == 1)
            obtainObjects(host);
    });
    return counted;
}

void modShared::obtainObjects(Host& host)
{
    m_session = host.createManager()->session();
    m_application = session().object(ApplicationProgId);
    const bool alone = m_application == nullptr;
    if (alone && !m_session->isConnected())
        m_session->connect(L"");
    m_patient = obtain<Patient>(PatientProgId);
    m_user = obtain<User>(UserProgId);
    m_site = obtain<Site>(SiteProgId);
    m_encounter = obtain<Encounter>(EncounterProgId);
    m_print = obtain<PrintPreview>(PrintProgId);
    if (alone)
        promptForContext();
}

template<typename Object>
std::shared_ptr<Object> modShared::obtain(TextView progId)
{
    auto object = std::dynamic_pointer_cast<Object>(m_session->object(progId));
    if (!object)
        throw Failure(L"The host has no object \"" + Text(progId) + L"\".");
    return object;
}

// Outside the host application nobody else asks the user for a patient and a visit.
void modShared::promptForContext()
{
    if (!m_patient->isSelected())
        m_patient->select();
    if (!m_encounter->isValid())
        m_encounter->prompt(1);
}

void modShared::ReleaseObjects()
{
    if (m_instanceCount > 0)
        --m_instanceCount;
    if (m_instanceCount >= 1)
        return;
    m_print.reset();
    m_encounter.reset();
    m_site.reset();
    m_user.reset();
    m_patient.reset();
    m_application.reset();
    m_session.reset();
    // The next start would otherwise show this user's text before it has asked for its own.
    m_permissionMessage.clear();
}

Text modShared::patientText() const { return wholeText(patient().number()); }

Text modShared::VersionText() const
{
    Text text = wholeText(VersionMajor) + L"." + wholeText(VersionMinor) + L".0." + wholeText(VersionRevision) + L"  "
        + Text(ApplicationTitle);
    if (!m_permissionMessage.empty())
        text += Text(LineBreak) + Text(LineBreak) + m_permissionMessage;
    return text;
}

}
