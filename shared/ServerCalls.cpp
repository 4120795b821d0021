// modShared: calls of remote procedures, their errors, reports.
#include "shared/modShared.h"

#include "api/Events.h"
#include "text/Conversions.h"

#include <algorithm>
#include <limits>

namespace health {

namespace {
constexpr TextView SystemError = L"System Error";
}

Text modShared::CallRpc(TextView name, TextView parameter) { return call(&Session::callText, name, parameter); }

Text modShared::CallRpcList(TextView name, TextView parameter) { return call(&Session::callList, name, parameter); }

Text modShared::call(SessionCall operation, TextView name, TextView parameter)
{
    try {
        m_desktop.setPointer(Pointer::Hourglass);
        Text reply = (session().*operation)(name, parameter);
        m_desktop.setPointer(Pointer::Default);
        m_lastCall = CallResult::Answered;
        return reply;
    } catch (const ConnectionGone& gone) {
        reportCall(name, gone.description());
        m_lastCall = CallResult::ServerGone;
    } catch (...) {
        reportCall(name, describeCurrentFailure());
        m_lastCall = CallResult::Failed;
    }
    return {};
}

// The box lets events in, and with them other calls.
void modShared::reportCall(TextView name, const Text& description)
{
    m_desktop.setPointer(Pointer::Default);
    ErrorBox(L"Error in remote procedure call: " + Text(name) + Text(LineBreak) + description, SystemError);
}

modShared::CallHint::CallHint(modShared& shared, std::span<const ExpectedCall> calls)
    : m_shared(shared)
{
    m_shared.expectCalls(calls);
}

modShared::CallHint::~CallHint() { m_shared.expectCalls({}); }

void modShared::expectCalls(std::span<const ExpectedCall> calls)
{
    try {
        if (m_session)
            m_session->expectCalls(calls);
    } catch (...) {
        // A hint that is not taken changes nothing.
    }
}

long long modShared::RpcErrorCode(TextView reply)
{
    const long long code = roundToWhole(leadingNumber(pieceView(reply, L"^", 1)));
    return code < 0 ? -std::max(code, -std::numeric_limits<long long>::max()) : 0;
}

bool modShared::CheckRpcError(TextView reply, TextView title)
{
    if (RpcErrorCode(reply) == 0)
        return false;
    TextView message = pieceView(reply, L"^", 2);
    // In a list reply the message carries the line's end.
    if (message.ends_with(LineBreak))
        message.remove_suffix(LineBreak.size());
    ErrorBox(message, title);
    SetStatusText(L"");
    return true;
}

void modShared::ReportError(TextView module, TextView procedure)
{
    // Taken first: clearing the status line calls the host, which may fail in its turn.
    const Text description = describeCurrentFailure();
    m_desktop.setPointer(Pointer::Default);
    try {
        raiseStatus(L"");
    } catch (...) {
        // The box below tells of the failure that came first.
    }
    ErrorBox(L"Error in module " + Text(module) + L" at " + Text(procedure) + Text(LineBreak) + Text(LineBreak)
            + description,
        SystemError);
}

bool modShared::trap(TextView module, TextView procedure, const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (...) {
        ReportError(module, procedure);
        return false;
    }
}

void modShared::raiseStatus(TextView text)
{
    if (m_session)
        m_session->raiseEvent(StatusEvent, text);
}

void modShared::SetStatusText(TextView text)
{
    trap(L"modShared", L"SetStatusText", [&] { raiseStatus(text); });
}

void modShared::ShowReport(TextView report, TextView title)
{
    try {
        required(m_print, L"print").preview(report, title, L"", L"", L"", 80, true, true);
    } catch (...) {
        ErrorBox(L"Error displaying requested report: " + Text(title) + Text(LineBreak) + describeCurrentFailure(),
            SystemError);
    }
}

void modShared::VisitDetail(TextView visit)
{
    trap(L"modShared", L"VisitDetail", [&] {
        if (visit.find_first_not_of(L' ') != TextView::npos)
            ShowReport(CallRpcList(L"MEVUTL GETRPT", visit), L"Visit Detail");
    });
}

}
