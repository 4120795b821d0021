// What the host framework offers to the panel, and what it tells the panel.
//
// The host implements these interfaces; the panel only calls them. All calls are made on the
// host's one user-interface thread. Every operation may throw Failure (or any std::exception) with a
// description for the user; nothing has changed then unless an operation says otherwise. Text arguments
// are read during the call and not kept.
#pragma once

#include "api/Text.h"

#include <memory>
#include <optional>
#include <span>

namespace health {

// The anchor of all objects that a session hands out by ProgID.
class HostObject {
public:
    virtual ~HostObject() = default;
};

// The patient that the host has selected. ProgID "CSS_Patient.Patient".
class Patient : public HostObject {
public:
    // Internal entry number; 0 when no patient is selected.
    virtual long number() const = 0;
    // "F", "M" or another code of the host; empty without a patient.
    virtual Text sex() const = 0;
    // Age in whole years, as the host shows it; the number at its beginning counts.
    virtual Text age() const = 0;
    virtual bool isSelected() const = 0;
    // Lets the user select a patient. Returns after the choice, also when none was made.
    virtual void select() = 0;
};

// The signed-on user. ProgID "CSS_User.User".
class User : public HostObject {
public:
    virtual long number() const = 0;
    virtual Text name() const = 0;
    // Takes key names joined by "^"; gives "1" (held) or "0" for each, joined by "^".
    virtual Text hasKeys(TextView keyNames) const = 0;
};

// The site that the session is signed on to. ProgID "CSS_Site.Site".
class Site : public HostObject {
public:
    virtual long number() const = 0;
    virtual Text name() const = 0;
};

// The current visit. ProgID "CSS_Encounter.Encounter".
class Encounter : public HostObject {
public:
    // Internal entry number of the current visit; 0 when there is none.
    virtual long visitNumber() const = 0;
    virtual bool isValid() const = 0;
    // Makes an active visit ready for new records and says whether there is one. Flags 12: only
    // looks, without a word to the user. Flags 44: offers the user a choice when there is none.
    virtual bool prepare(int flags) = 0;
    // Asks the user for a visit; `kind` is the host's own.
    virtual void prompt(int kind) = 0;
};

// The host application. ProgID "DRN_VIM.VIM"; a session without it runs outside the application.
class HostApplication : public HostObject { };

// Report preview. ProgID "zvPrint.zvPrintX".
class PrintPreview : public HostObject {
public:
    // Shows a report of lines of at most `lineWidth` characters and returns when it was closed. The three
    // subtitles may be empty; `pageNumbers` and `patientHeading` ask for these on every page.
    virtual void preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2, TextView subtitle3,
        int lineWidth, bool pageNumbers, bool patientHeading) = 0;
};

// What a session tells its subscribers.
class ICSS_SessionEvents {
public:
    virtual ~ICSS_SessionEvents() = default;
    // An event whose name equals a registered name or begins with it and a ".".
    virtual void EventCallback(TextView name, TextView data) = 0;
    // The reply of an asynchronous request.
    virtual void RPCCallback(long handle, TextView reply) = 0;
    virtual void RPCCallbackError(long handle, long code, TextView description) = 0;
};

// What the host tells a panel of the selected patient and of the current visit.
class ICSS_PatientEvents {
public:
    virtual ~ICSS_PatientEvents() = default;
    // A change is about to happen; true would veto it.
    virtual bool Pending() = 0;
    virtual void Committed() = 0;
    virtual void Canceled() = 0;
};

class ICSS_EncounterEvents {
public:
    virtual ~ICSS_EncounterEvents() = default;
    virtual bool Pending() = 0;
    virtual void Committed() = 0;
    virtual void Canceled() = 0;
};

// A call that is about to be made.
struct ExpectedCall {
    enum class Form {
        OneText, // by callText
        Lines, // by callList
    };

    // What its reply is for. The server refuses to change a record that is not any more what its session has read for
    // a list or a form.
    enum class Purpose {
        Other,
        List, // of records, which the user sees
        Editor, // a form that may save the record
    };

    Form form;
    Text name;
    Text parameter;
    Purpose purpose = Purpose::Other;
};

// The session with the clinical server.
class Session : public HostObject {
public:
    // A hint: these calls come next, in this order. They read only. A session may ask the server for all of them at
    // once, so that they cost one round trip; each call gives what it would have given by itself. Any other call, and
    // an empty list, end the hint. Never throws. A session that does not know hints ignores it.
    virtual void expectCalls(std::span<const ExpectedCall>) { }

    // Calls a remote procedure with one parameter text ("^"-pieces) and waits for its reply: one text of
    // "^"-pieces. A failure means that there is no reply.
    virtual Text callText(TextView name, TextView parameter) = 0;
    // The same for a reply of lines, each ended by CR LF, the last one included.
    virtual Text callList(TextView name, TextView parameter) = 0;
    // Drops a pending asynchronous request; an unknown handle is ignored.
    virtual void abortRequest(long handle) = 0;

    // Subscribes a sink to an event name. The session does not own the sink: it must be unregistered
    // before it goes. Registering twice equals once.
    virtual void registerEvent(TextView name, ICSS_SessionEvents& sink) = 0;
    virtual void unregisterEvent(TextView name, ICSS_SessionEvents& sink) = 0;
    // Raises an event inside this host only.
    virtual void raiseEvent(TextView name, TextView data) = 0;

    // The session's cache of named values, shared by all components; empty optional: never stored.
    virtual std::optional<Text> value(TextView key) const = 0;
    virtual void setValue(TextView key, TextView value) = 0;

    virtual bool isConnected() const = 0;
    // Connects to a server; an empty text leaves the choice of server and user to the host.
    virtual void connect(TextView server) = 0;

    // The object registered under a ProgID, null when the host has none. Shared with the host.
    virtual std::shared_ptr<HostObject> object(TextView progId) = 0;
};

// The framework's entrance; a component asks it for the session and drops it.
class HostManager {
public:
    virtual ~HostManager() = default;
    virtual std::shared_ptr<Session> session() = 0;
};

// Where a component gets its manager from. Outlives every component instance.
class Host {
public:
    virtual ~Host() = default;
    virtual std::unique_ptr<HostManager> createManager() = 0;
};

}
