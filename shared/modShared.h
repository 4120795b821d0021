#pragma once

#include "shared/KeptEntries.h"
#include "shared/OpenForms.h"
#include "shared/PatientHeading.h"
#include "shared/RegistryDue.h"
#include "shared/Security.h"
#include "shared/UserParameters.h"
#include "text/FileManDates.h"

namespace health {

// The services that the control and all forms share: its base classes, each usable and testable alone, plus the
// operations that need several of them. One object per process, shared by all instances of the control; the component
// owns it and it outlives them. Operations report their failures to the user and throw nothing, except KnowsUserParam
// and the accessors of the host objects.
class modShared : private SharedObjects,
                  public Messages,
                  public ErrorReports,
                  public ServerCalls,
                  public Security,
                  public UserParameters,
                  public OpenForms,
                  public KeptEntries,
                  public RegistryDue {
public:
    // The desktop must outlive the object.
    explicit modShared(Desktop& desktop);
    modShared(const modShared&) = delete;
    modShared& operator=(const modShared&) = delete;

    Desktop& desktop() { return m_desktop; }

    // Counts a new control instance and, for the first, obtains the host objects. `reload` first loads and unloads a
    // hidden form. False when it failed before the instance was counted.
    bool InitObjects(Host& host, bool reload);
    // The counterpart: uncounts an instance and, with the last, releases all host objects.
    void ReleaseObjects();
    int instanceCount() const { return m_instanceCount; }
    // The heading of a form that is opened now; see PatientHeading.h.
    FormHeading patientHeading() const { return health::patientHeading(*this); }
    using SharedObjects::encounter;
    using SharedObjects::hasSession;
    using SharedObjects::patient;
    using SharedObjects::patientText;
    using SharedObjects::session;
    using SharedObjects::site;
    using SharedObjects::user;

    // FileMan text of a date text; empty for an empty one, for a year up to 1700, and, after an error report,
    // for a text that is not a date.
    Text DateToFMDate(TextView text, TimePart timePart);

    // See EditShortcuts.h.
    void FilterEditKeys(int& keyCode, int shift, EditHandle edit);

    // Version and title, followed by the permission message if there is one.
    Text VersionText() const;

private:
    Desktop& m_desktop;
    short m_instanceCount = 0;
};

}
