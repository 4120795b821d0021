#pragma once

#include "api/Failure.h"
#include "api/host.h"

namespace health {

// The host's objects that the control and all forms use. Empty before obtain() and after release().
class SharedObjects {
public:
    // Gets the session and the objects from the host. Outside the host application it also connects the session and
    // asks the user for a patient and a visit. Throws what the host throws, and Failure for an object that is missing;
    // the objects obtained so far stay.
    void obtain(Host& host);
    void release();

    // Each throws Failure when the object was not obtained.
    Session& session() const { return required(m_session, L"session"); }
    Patient& patient() const { return required(m_patient, L"patient"); }
    User& user() const { return required(m_user, L"user"); }
    Site& site() const { return required(m_site, L"site"); }
    Encounter& encounter() const { return required(m_encounter, L"encounter"); }
    PrintPreview& print() const { return required(m_print, L"print"); }

    bool hasSession() const { return m_session != nullptr; }
    // The patient's number as call parameters contain it.
    Text patientText() const;

private:
    template<typename Object>
    static Object& required(const std::shared_ptr<Object>& object, TextView name)
    {
        if (!object)
            throw Failure(L"The host's " + Text(name) + L" object is not available.");
        return *object;
    }
    template<typename Object>
    std::shared_ptr<Object> objectOf(TextView progId);
    void promptForContext();

    std::shared_ptr<Session> m_session;
    std::shared_ptr<HostObject> m_application; // null outside the host application
    std::shared_ptr<Patient> m_patient;
    std::shared_ptr<User> m_user;
    std::shared_ptr<Site> m_site; // only exports use it
    std::shared_ptr<Encounter> m_encounter;
    std::shared_ptr<PrintPreview> m_print;
};

}
