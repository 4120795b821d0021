// The operations of a loadable component. A host calls them, and implements the interfaces of api/host.h.
//
// A component is a shared library with four C entry points. A host finds the library by its manifest, gets the class
// object of a ProgID from it, and creates as many instances as the user opens. The manifest is a JSON file
// PROGID.json in the folder "personal-health/components" below the user's data folder (XDG_DATA_HOME), where
// ComponentRegister writes it, or below one of the system's (XDG_DATA_DIRS), where a package installs it. The variable
// PERSONAL_HEALTH_COMPONENTS names another folder for the user's manifests. Members:
//
//   "progId"     the ProgID
//   "library"    path of the library, absolute or relative to the manifest's folder
//   "interface"  ComponentInterface (below) of the library; a manifest without it means 1
//   "version"    of the component, for people
//
// Binary interface: texts (std::wstring), std::vector, std::shared_ptr, exceptions and dynamic casts cross the
// library's boundary. Host and component must therefore be built by the same compiler family with the same C++ standard
// library, both with exceptions and RTTI, and must load the same Qt, because the panel is a QWidget. Nothing checks
// that. ComponentInterface guards the declarations in these headers only: a host compares it with the manifest
// before it loads the library.
//
// Thread: a host calls everything here, the entry points included, on the thread of its QApplication. Only
// ComponentRegister and ComponentUnregister need no QApplication. Instances are destroyed before the QApplication.
#pragma once

#include "api/RecordTypeNumber.h"
#include "api/host.h"

#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace health {

// The version of the interfaces in this header and in api/host.h; each change of them increments it. A host loads only
// libraries with the same number, because it would misread any others.
inline constexpr int ComponentInterface = 5;

// Something about the patient that a clinician should know before opening any record.
struct PatientAlert {
    enum class Kind {
        Caution, // to be considered in whatever is done next
        Due, // on a date
    };

    Kind kind = Kind::Caution;
    Text text; // one line, such as "Pregnant, due 04/30/2027"

    bool operator==(const PatientAlert&) const = default;
};

// A form in which a panel exports its records.
enum class ExportFormat {
    Fhir, // one file: a Bundle of HL7 FHIR R4 in JSON
    Csv, // a file for each kind of record, for spreadsheet programs
};

// What a panel exports: patients' data, to be kept where only the user can read it.
struct ExportedFile {
    Text name; // a suggestion, without a folder, such as "patient-12.fhir.json"
    std::string bytes;
};

// One panel on a page of the host. Unless noted otherwise, the operations report failures to the user and do not throw.
class ComponentInstance {
public:
    // Unregisters the events and destroys the widget; the last instance releases the host objects. A host must not
    // destroy an instance during a call or while a dialog is open.
    virtual ~ComponentInstance() = default;

    // The panel's widget; owned by the instance. The host places it on a page (setting a parent is fine), removes it
    // from the page (setParent(nullptr)) before it destroys the instance or the page, and never deletes it. The panel
    // loads its list inside the widget's first showEvent; until then it ignores all events. Focusing the widget focuses
    // the list.
    virtual QWidget* widget() = 0;

    // The host announces changes of the patient and of the visit to these two objects; valid as long as the instance.
    virtual ICSS_PatientEvents& patientEvents() = 0;
    virtual ICSS_EncounterEvents& encounterEvents() = 0;

    // Opens the editor of a record for the current patient, as the panel's own commands do: checks the user's
    // permission and, for a type that needs a visit, uses the active one if `visit` is empty. `type` is a
    // RecordTypeNumber; any other number does nothing, nor does a call without a patient. `record` and `visit` are
    // numbers from the server's replies; an empty record adds one. A type with one record per patient (Reproductive,
    // BirthMeasurements) ignores both. Mainly for records that the panel does not list: emergency visits
    // (EmergencyRoom), whose page belongs to the host. The editor is an application-modal QDialog; the call returns
    // when it is closed. The widget need not have been shown.
    virtual void openRecord(int type, const Text& record, const Text& visit) = 0;

    // Opens the form of the entry that the event DISCARDED offers, with the entry in it; does nothing if there is no
    // such entry. Returns when the form is closed.
    virtual void reopenEntry() = 0;

    // How the panel is arranged, for the host to remember (never patients' data): an opaque text without line breaks,
    // to be set again on another instance, even in another process. A panel ignores what it does not understand.
    virtual Text viewState() const { return {}; }
    virtual void setViewState(const Text&) { }

    // What the listed records say that the host may show beside the patient's name, and when the next asthma visit is
    // due, if a form has read the registry. Empty without a patient and while the list is loading; to be asked again
    // when a load has ended (STATUS with an empty text) and when a form has been closed. Calls nobody.
    virtual std::vector<PatientAlert> alerts() const { return {}; }

    // The records of the list as files: those that the user sees, in the order that the user sees. Asks nothing and
    // writes nothing; docs/export.md describes the contents. Empty before the widget's first display, without a patient
    // and while the list is loading. Throws what the host's objects throw.
    virtual std::vector<ExportedFile> exportRecords(ExportFormat) const { return {}; }

    // The texts of the list as the user sees it: a vector for each row with a text for each shown column. A text may
    // hold line breaks. Empty before the widget's first display and while the list is loading. Without a patient,
    // its only row says so. Throws only std::bad_alloc.
    virtual std::vector<std::vector<Text>> rows() const = 0;
};

// Creates the instances of one ProgID. Owned by the library.
class ComponentClass {
public:
    // The host must outlive all instances. The host of the first instance serves all further ones too, until the last
    // one is destroyed. If the host's objects fail, the user sees the error and the panel shows no records.
    // Throws std::exception if the instance itself cannot be created.
    virtual std::unique_ptr<ComponentInstance> create(Host& host) = 0;

protected:
    ~ComponentClass() = default;
};

// Entry points, by their names in the library. None of them throws.
extern "C" {
// The class object of a ProgID (UTF-8), null if the library has no such class.
using ComponentGetClassObjectFunction = ComponentClass*(const char* progId);
// True if no instance exists, so that the library may be unloaded.
using ComponentCanUnloadNowFunction = bool();
// Writes the user's manifest for the library at an absolute path (UTF-8); false if that failed.
using ComponentRegisterFunction = bool(const char* libraryPath);
// Removes the user's manifest; true also if there was none.
using ComponentUnregisterFunction = bool();
}

inline constexpr const char* ComponentGetClassObjectName = "ComponentGetClassObject";
inline constexpr const char* ComponentCanUnloadNowName = "ComponentCanUnloadNow";
inline constexpr const char* ComponentRegisterName = "ComponentRegister";
inline constexpr const char* ComponentUnregisterName = "ComponentUnregister";

}
