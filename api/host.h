// What a host implements for the panel, and which events it sends to the panel.
//
// Thread: all calls in both directions happen on the one thread that runs the QApplication.
//
// Errors: every operation of a host object may throw Failure (api/Failure.h) or any other std::exception, unless its
// comment says otherwise. The panel shows the description in a message box. The event handlers of the panel (ICSS_...
// below) report their own failures in the same way and do not throw.
//
// Events: a session never calls EventCallback while one of its calls (callText, callList, registerEvent, connect) is
// waiting for the server, even if the event arrives then; it delivers the event afterwards, from the event loop. A
// host changes the patient or the visit only while no call is running and no modal dialog is open. Events may arrive
// while one is open: the panel's message boxes and forms run event loops of their own.
//
// Text arguments are read during the call and not kept. "^"-pieces are the parts of a text between "^" characters,
// counted from 1.
//
// The order of the panel's calls:
//
// - ComponentClass::create: the first instance of the process asks the Host for a manager, the manager for its session,
//   and the session for its objects by ProgID (api/ProgIds.h). It keeps the session and the objects for all further
//   instances, which do not ask their Host; the last instance releases them. If the session has no
//   HostApplication, the panel also connects a session that is not connected, and asks for a patient and a visit.
//   Each instance then makes the call "MEVUTL CHKSEC" and calls User::hasKeys.
// - First display of the widget, inside showEvent: reads the patient. If one is selected, registers the events of that
//   patient (api/Events.h), and loads the list: raises STATUS, announces the calls by expectCalls, calls "MEVREP GET",
//   "MEVBMSR GET" (both by callText), "MEVVIF GET", "MEVVELD GET", "MEVVAST GET", "MEVVTXC GET" and "MEVREF GET" (by
//   callList), as far as the patient's sex and age allow, and raises STATUS with an empty text. Then registers REFRESH,
//   and CONNECTION if the host shows the panel.
// - A change of the patient unregisters the old patient's events and does the same for the new patient, except for
//   REFRESH. An event of the patient, or REFRESH, loads the list again.
// - Forms and lookups call the rest of the server's procedures (docs/protocol.md, "Calls of the panel") when the user
//   opens and saves them.
// - Destruction of an instance unregisters its events.
#pragma once

#include "api/Printout.h"
#include "api/Text.h"

#include <chrono>
#include <memory>
#include <optional>
#include <span>

namespace health {

// The base of all objects that a session hands out by ProgID. The panel finds the object's type by dynamic cast.
class HostObject {
public:
    virtual ~HostObject() = default;
};

// The patient that the host has selected. PatientProgId.
class Patient : public HostObject {
public:
    // Internal entry number; 0 if no patient is selected.
    virtual long number() const = 0;
    // "F", "M" or another code of the host; empty without a patient.
    virtual Text sex() const = 0;
    // Age in whole years, as the host shows it. Only the number at its beginning counts.
    virtual Text age() const = 0;
    // For the headings of the panel's forms: the name and the age as people read them, such as "Hartley, Marigold Rose"
    // and "4 months". A heading leaves empty ones out.
    virtual Text displayName() const { return {}; }
    virtual Text displayAge() const { return {}; }
    // For exports: the date of birth as far as it is known, "1996-04-02", "1996-04" or "1996". Empty if it is unknown.
    virtual Text birthDate() const { return {}; }
    virtual bool isSelected() const = 0;
    // Lets the user select a patient. Returns after the choice, or when the user cancels. The panel calls it only
    // outside a HostApplication.
    virtual void select() = 0;
};

// The signed-on user. UserProgId.
class User : public HostObject {
public:
    virtual long number() const = 0;
    virtual Text name() const = 0;
    // Takes key names joined by "^"; returns "1" (held) or "0" for each in the same order, joined by "^".
    virtual Text hasKeys(TextView keyNames) const = 0;
};

// The site that the session is signed on to. SiteProgId.
class Site : public HostObject {
public:
    virtual long number() const = 0;
    virtual Text name() const = 0;
    // For exports: the https URL below which the numbers of the site's patients, visits, providers and records are
    // unique. Empty if the site has none; then exports use a URL of a reserved domain.
    virtual Text identifiers() const { return {}; }
    // For exports: the offset from UTC of the clock by which the server's records are dated, at a local time of that
    // clock: "+02:00", "-07:00" or "Z". Empty if it is not certain, as in the hour that a clock repeats in autumn;
    // exports then write the date without its time.
    virtual Text zoneOffset(std::chrono::local_seconds) const { return {}; }
};

// The current visit. EncounterProgId.
class Encounter : public HostObject {
public:
    // Internal entry number of the current visit; 0 without a visit.
    virtual long visitNumber() const = 0;
    // For the headings of the panel's forms: date and place, such as "11/21/2026 08:15, Pediatric Clinic". Empty
    // without a visit.
    virtual Text displayText() const { return {}; }
    virtual bool isValid() const = 0;
    // Makes an active visit ready for new records; true if there is one. Flags 12: checks silently; the panel calls
    // this whenever it updates its commands. Flags 44: without an active visit, also lets the user choose one.
    virtual bool prepare(int flags) = 0;
    // Asks the user for a visit. The panel calls it only outside a HostApplication, with 1 for `kind`.
    virtual void prompt(int kind) = 0;
};

// The host application. ApplicationProgId. It has no operations; if a session does not have this object,
// the panel runs outside the application.
class HostApplication : public HostObject { };

// Report preview. PrintProgId.
class PrintPreview : public HostObject {
public:
    // Shows a report and returns when the user closes it. The report is lines ended by CR LF, of at most `lineWidth`
    // characters (80 for the panel's reports). Empty subtitles take no line; `pageNumbers` and `patientHeading`
    // request these on every page.
    virtual void preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2, TextView subtitle3,
        int lineWidth, bool pageNumbers, bool patientHeading) = 0;
    // Shows pages that the panel draws, each with the patient, the user, the date and its number; lets the user print
    // them or save them as PDF. Returns when the user closes them; false if the host cannot show such pages.
    virtual bool previewPages(Printout&) { return false; }
};

// What a session sends to its subscribers; the panel implements it.
class ICSS_SessionEvents {
public:
    virtual ~ICSS_SessionEvents() = default;
    // Receives each event whose name equals a registered name or begins with it and a ".". May register and unregister
    // events, and calls the server.
    virtual void EventCallback(TextView name, TextView data) = 0;
    // The reply of an asynchronous request, and its failure. The panel makes no asynchronous request; both do nothing.
    virtual void RPCCallback(long handle, TextView reply) = 0;
    virtual void RPCCallbackError(long handle, long code, TextView description) = 0;
};

// How a host announces a change of the patient; ComponentInstance::patientEvents. A host calls Pending of all
// instances. If none returns true, it changes its Patient object and calls Committed of all, else Canceled of all.
// Committed loads the list before it returns. Before a host selects another patient, it commits the number 0 to all
// instances, so that no instance still shows the former patient while another one loads. After a change of the patient
// it also calls Committed of the visit.
class ICSS_PatientEvents {
public:
    virtual ~ICSS_PatientEvents() = default;
    // The host is about to make a change; returning true vetoes it. The panel returns false.
    virtual bool Pending() = 0;
    virtual void Committed() = 0;
    virtual void Canceled() = 0;
};

// The same for the current visit and its Encounter object. The panel highlights the visit's records.
class ICSS_EncounterEvents {
public:
    virtual ~ICSS_EncounterEvents() = default;
    virtual bool Pending() = 0;
    virtual void Committed() = 0;
    virtual void Canceled() = 0;
};

// A call that the panel announces.
struct ExpectedCall {
    enum class Form {
        OneText, // by callText
        Lines, // by callList
    };

    // What the reply is for. If a session passes the purposes on, the server refuses to change a record that is no
    // longer as the session last read it for a list or a form (docs/protocol.md, "Conflicting changes").
    enum class Purpose {
        Other, // states no purpose
        List, // of records, which the user sees: LIST
        Editor, // a form that may save the record: EDIT
    };

    Form form;
    Text name;
    Text parameter;
    Purpose purpose = Purpose::Other;
};

// The session with the clinical server.
class Session : public HostObject {
public:
    // A hint: these calls come next, in this order, and only read. A session may send all of them immediately, so that
    // they cost one round trip; each call still returns what it would have returned without the hint. Any other call,
    // and an empty list, end the hint. A session that does not support hints ignores it. Does not throw.
    virtual void expectCalls(std::span<const ExpectedCall>) { }

    // Calls a remote procedure with one parameter text ("^"-pieces), waits for the reply and returns it: one text of
    // "^"-pieces. A refusal of the server is a reply too: "-1^message". A Failure means that there is no reply; the
    // panel shows it and treats the reply as empty. A ConnectionGone also ends the load of the list.
    virtual Text callText(TextView name, TextView parameter) = 0;
    // The same for a reply of lines, each ended by CR LF, the last one included; empty if there are no lines.
    virtual Text callList(TextView name, TextView parameter) = 0;
    // Cancels an asynchronous request; ignores an unknown handle. The panel makes no such request.
    virtual void abortRequest(long handle) = 0;

    // Subscribes a sink to an event name. The session does not own the sink, which unregisters itself before it is
    // destroyed. A second registration of the same name and sink has no effect.
    virtual void registerEvent(TextView name, ICSS_SessionEvents& sink) = 0;
    // Ignores a registration that does not exist.
    virtual void unregisterEvent(TextView name, ICSS_SessionEvents& sink) = 0;
    // Raises an event inside this host only. Outside a call it may deliver the event before it returns. The panel
    // raises STATUS, SAVED, DISCARDED and TRYNOW.
    virtual void raiseEvent(TextView name, TextView data) = 0;

    // The session's cache of named values, shared by all components; nullopt if never stored. A host empties it when
    // another user signs on.
    virtual std::optional<Text> value(TextView key) const = 0;
    virtual void setValue(TextView key, TextView value) = 0;

    virtual bool isConnected() const = 0;
    // Connects to a server; an empty text leaves the choice of server and user to the host. The panel calls it only
    // outside a HostApplication, when the session is not connected.
    virtual void connect(TextView server) = 0;

    // The object registered under a ProgID, null if the host has none. Shared with the host.
    virtual std::shared_ptr<HostObject> object(TextView progId) = 0;
};

// The entry to the framework. The panel gets the session from it and then releases it.
class HostManager {
public:
    virtual ~HostManager() = default;
    virtual std::shared_ptr<Session> session() = 0;
};

// Creates the manager for a component. Outlives every component instance.
class Host {
public:
    virtual ~Host() = default;
    virtual std::unique_ptr<HostManager> createManager() = 0;
};

}
