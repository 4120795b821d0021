// The services that the control and all forms share.
#pragma once

#include "api/Failure.h"
#include "api/host.h"
#include "platform/Desktop.h"
#include "text/FileManDates.h"
#include "text/Pieces.h"

#include <functional>

namespace health {

// What the server said of the signed-on user's keys and of the edit-blocking parameter.
struct SecurityFlags {
    bool hasProvider = false;
    bool hasCac = false; // asked for; decides nothing
    bool viewOnly = false;
    bool hasEditKey = false; // holds the caller's extra key, or none was named
    bool paramAssigned = false;
    Text paramUserClass; // the class through which the parameter is set, or empty
};

enum class CallResult {
    Answered, // a refusal is an answer, too
    Failed,
    ServerGone, // it cannot be reached, and the user did not want to try again
};

// Server calls and error reporting, message boxes, dates that may be reported, the host objects with the
// user's keys, user parameters. One object per process, shared by all instances of the control; the
// component owns it and it outlives them. Operations report their failures to the user and throw
// nothing, but for KnowsUserParam and the accessors of the host objects.
class modShared {
public:
    // The desktop must outlive the object.
    explicit modShared(Desktop& desktop)
        : m_desktop(desktop)
    {
    }
    modShared(const modShared&) = delete;
    modShared& operator=(const modShared&) = delete;

    Desktop& desktop() { return m_desktop; }

    // --- Server calls and error reporting ---

    // Calls a remote procedure with its parameter ("^"-pieces) under the hourglass. A failed call is shown in
    // a box and gives an empty text.
    Text CallRpc(TextView name, TextView parameter);
    // The same for a reply of lines, each ended by CR LF.
    Text CallRpcList(TextView name, TextView parameter);

    // What became of the call that was made last.
    CallResult lastCall() const { return m_lastCall; }

    // Tells the session which calls come next; at the end of the object's life the hint ends. Fails silently: the calls
    // themselves tell of what is wrong.
    class CallHint {
    public:
        CallHint(modShared& shared, std::span<const ExpectedCall> calls);
        ~CallHint();
        CallHint(const CallHint&) = delete;
        CallHint& operator=(const CallHint&) = delete;

    private:
        modShared& m_shared;
    };

    // The number of a server error: minus the reply's first piece when that is negative, else 0.
    static long long RpcErrorCode(TextView reply);

    // True when the reply is a server error; its message has then been shown under the title (empty: "Error").
    // Callers stop on true, also when the message was empty and no box appeared.
    bool CheckRpcError(TextView reply, TextView title);

    // Shows the failure that is being handled. To be called inside a catch block.
    void ReportError(TextView module, TextView procedure);

    // The one error trap: does the work, reports what it throws. False when it threw.
    bool trap(TextView module, TextView procedure, const std::function<void()>& work);

    // A handler of any event that does the work under the error trap. The texts must outlive the handler.
    template<typename Work>
    auto trapped(TextView module, TextView procedure, Work work)
    {
        return [this, module, procedure, work = std::move(work)](
                   auto&&... arguments) { trap(module, procedure, [&] { work(arguments...); }); };
    }

    // Shows a text in the host's status line; an empty one clears it.
    void SetStatusText(TextView text);

    // Shows lines of text in the host's print preview; a failure is shown in a box.
    void ShowReport(TextView report, TextView title);

    // Shows the report of a visit; an identifier of blanks does nothing.
    void VisitDetail(TextView visit);

    // --- Message boxes ---

    // Fills an empty title with the kind's own, in the caller's variable too; an empty text shows no box.
    void ShowMessage(TextView text, Text& title, int kind);
    void ErrorBox(TextView text, TextView title);
    void InfoBox(TextView text, TextView title);
    void WarningBox(TextView text, TextView title);
    // True for Yes; No is the default button.
    bool ConfirmBox(TextView text, Text& title);
    bool ConfirmBox(TextView text, TextView title);

    // FileMan text of a date text; empty for an empty one, for a year up to 1700, and, after an error report,
    // for a text that is no date.
    Text DateToFMDate(TextView text, TimePart timePart);

    // Carries out Control with A, C, V, X, Y or Z in a multi-line box and sets the key code to 0 then. The shift state
    // is 1 for Shift, 2 for Control, 4 for Alt.
    void FilterEditKeys(int& keyCode, int shift, EditHandle edit);

    // --- Host objects ---

    // What a new control instance needs first: counts it and, for the first, obtains the host objects. `reload` loads
    // and unloads a hidden form before. False when it failed before the instance was counted.
    bool InitObjects(Host& host, bool reload);
    // The counterpart: lowers the count, and at the last instance lets go of all host objects.
    void ReleaseObjects();
    int instanceCount() const { return m_instanceCount; }

    // Each throws Failure when the object was not obtained.
    Session& session() const { return required(m_session, L"session"); }
    Patient& patient() const { return required(m_patient, L"patient"); }
    User& user() const { return required(m_user, L"user"); }
    Encounter& encounter() const { return required(m_encounter, L"encounter"); }
    // The patient's number as it stands in parameters.
    Text patientText() const;
    bool hasSession() const { return m_session != nullptr; }

    // --- Keys and parameters ---

    // Asks the server for the user's keys and the edit-blocking parameter and builds PermissionMessage. The extra
    // key may be empty.
    void CheckSecurity(TextView parameterName, TextView extraKey);
    bool HasProvider() const { return m_flags.hasProvider; }
    // Why the user may not modify records; empty when the user may.
    const Text& PermissionMessage() const { return m_permissionMessage; }

    // A user parameter, asked of the server once per session; `defaultValue` stands for an empty one.
    Text GetUserParam(TextView name, TextView defaultValue);
    // It was asked for in this session; false also where there is no session.
    bool KnowsUserParam(TextView name) const;
    void SetUserParam(TextView name, TextView value);

    // Version and title, with the permission message below when there is one.
    Text VersionText() const;

private:
    using SessionCall = Text (Session::*)(TextView, TextView);

    template<typename Object>
    static Object& required(const std::shared_ptr<Object>& object, TextView what);
    template<typename Object>
    std::shared_ptr<Object> obtain(TextView progId);

    void expectCalls(std::span<const ExpectedCall> calls);
    Text call(SessionCall operation, TextView name, TextView parameter);
    void reportCall(TextView name, const Text& description);
    void raiseStatus(TextView text);
    void obtainObjects(Host& host);
    void promptForContext();
    Text permissionReason(TextView parameterName, TextView extraKey) const;

    Desktop& m_desktop;

    short m_instanceCount = 0;
    std::shared_ptr<Session> m_session;
    std::shared_ptr<HostObject> m_application; // the DRN_VIM object, null outside the host application
    std::shared_ptr<Patient> m_patient;
    std::shared_ptr<User> m_user;
    std::shared_ptr<Site> m_site;
    std::shared_ptr<Encounter> m_encounter;
    std::shared_ptr<PrintPreview> m_print;

    CallResult m_lastCall = CallResult::Answered;
    SecurityFlags m_flags;
    Text m_permissionMessage;
};

template<typename Object>
Object& modShared::required(const std::shared_ptr<Object>& object, TextView what)
{
    if (!object)
        throw Failure(L"The host's " + Text(what) + L" object is not available.");
    return *object;
}

}
