#pragma once

#include "shared/ErrorReports.h"
#include "text/Pieces.h"

namespace health {

enum class CallResult {
    Answered, // a server error is an answer too
    Failed,
    ServerGone, // it cannot be reached, and the user chose not to retry
};

// Calls of remote procedures, checks of their replies, and the reports that they return.
class ServerCalls {
public:
    // All four must outlive the object.
    ServerCalls(Desktop& desktop, Messages& messages, const SharedObjects& objects, ErrorReports& errors)
        : m_desktop(desktop)
        , m_messages(messages)
        , m_objects(objects)
        , m_errors(errors)
    {
    }

    // Calls a remote procedure with its parameter ("^"-pieces) under the hourglass. A failed call is shown in
    // a box and returns an empty text.
    Text CallRpc(TextView name, TextView parameter) { return call(&Session::callText, name, parameter); }
    // The same for a reply of lines, each ended by CR LF.
    Text CallRpcList(TextView name, TextView parameter) { return call(&Session::callList, name, parameter); }

    // The result of the most recent call.
    CallResult lastCall() const { return m_lastCall; }

    // Announces the next calls to the session until the object is destroyed. Never reports errors; the calls
    // themselves will.
    class CallHint {
    public:
        CallHint(ServerCalls& server, std::span<const ExpectedCall> calls);
        ~CallHint();
        CallHint(const CallHint&) = delete;
        CallHint& operator=(const CallHint&) = delete;

    private:
        ServerCalls& m_server;
    };

    // The number of a server error: minus the reply's first piece when that is negative, else 0.
    static long long RpcErrorCode(TextView reply);

    // True when the reply is a server error, after showing its message under the title (empty: "Error").
    // Callers stop on true, also when the message was empty and no box appeared.
    bool CheckRpcError(TextView reply, TextView title);

    // Shows lines of text in the host's print preview; a failure is shown in a box.
    void ShowReport(TextView report, TextView title);
    // Shows pages in the host's print preview; a failure is shown in a box.
    void ShowPages(Printout& pages);
    // Shows the report of a visit; does nothing when the identifier is blank.
    void VisitDetail(TextView visit);

private:
    using SessionCall = Text (Session::*)(TextView, TextView);

    Text call(SessionCall operation, TextView name, TextView parameter);
    void reportCall(TextView name, const Text& description);
    void expectCalls(std::span<const ExpectedCall> calls);

    Desktop& m_desktop;
    Messages& m_messages;
    const SharedObjects& m_objects;
    ErrorReports& m_errors;
    CallResult m_lastCall = CallResult::Answered;
};

}
