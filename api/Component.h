// What a loadable component offers to a host: the only header of it that a host includes.
//
// A component is a shared library with four C entry points. A host finds the library by its manifest, gets
// the class object of a ProgID from it, and creates as many instances as the user opens. Registering
// writes the manifest, a JSON file PROGID.json with the members "progId", "library" (its path: absolute, or from the
// manifest's folder) and "version", into the folder "personal-health/components" below the user's data folder
// (XDG_DATA_HOME), and "interface", the number below. An installed package puts it into the same folder below the
// system's (XDG_DATA_DIRS), for all users.
#pragma once

#include "api/host.h"

#include <memory>
#include <vector>

class QWidget;

namespace health {

// Of the interfaces in this header and in api/host.h: rises with each change of them. A host loads a library of
// its own number only; another one would misread them.
inline constexpr int ComponentInterface = 3;

// One panel on a page of the host.
class ComponentInstance {
public:
    // Drops the panel's subscriptions, its widget and, with the last instance, the host objects.
    virtual ~ComponentInstance() = default;

    // The panel's widget; owned by the instance. The host places it on a page (setting a parent there
    // is fine) and takes it off the page before it drops the instance. The panel starts to work
    // when it is first shown. Giving it the focus puts the focus on the list.
    virtual QWidget* widget() = 0;

    // Where the host tells this panel of changes of the patient and of the visit. It asks Pending of every
    // instance before the change and calls Committed (or Canceled) afterwards.
    virtual ICSS_PatientEvents& patientEvents() = 0;
    virtual ICSS_EncounterEvents& encounterEvents() = 0;

    // Opens the editor of a record for the current patient, as the panel's own commands do: the permission is asked,
    // and without a visit the active one is taken. For records that the panel does not list: emergency visits, type 8,
    // whose page belongs to the host. An empty record adds one. Returns when the editor is closed.
    virtual void openRecord(int type, const Text& record, const Text& visit) = 0;

    // The texts of the list as the user sees it: a vector for each row with a text for each shown column. A text may
    // hold line breaks. Empty while the list is loading. Without a patient it holds the one row that says so.
    virtual std::vector<std::vector<Text>> rows() const = 0;
};

// Makes the instances of one ProgID. Owned by the library.
class ComponentClass {
public:
    // The host must outlive all instances.
    virtual std::unique_ptr<ComponentInstance> create(Host& host) = 0;

protected:
    ~ComponentClass() = default;
};

// Entry points, by their names in the library. None of them throws.
extern "C" {
// The class object of a ProgID (UTF-8), null when the library has no such class.
using ComponentGetClassObjectFunction = ComponentClass*(const char* progId);
// True when no instance lives, so that the library may be unloaded.
using ComponentCanUnloadNowFunction = bool();
// Writes the manifest for the library at an absolute path (UTF-8); false when that failed.
using ComponentRegisterFunction = bool(const char* libraryPath);
// Removes the manifest; true also when there was none.
using ComponentUnregisterFunction = bool();
}

inline constexpr const char* ComponentGetClassObjectName = "ComponentGetClassObject";
inline constexpr const char* ComponentCanUnloadNowName = "ComponentCanUnloadNow";
inline constexpr const char* ComponentRegisterName = "ComponentRegister";
inline constexpr const char* ComponentUnregisterName = "ComponentUnregister";

}
