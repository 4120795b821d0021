#include "shared/ServerCalls.h"

#include "text/Conversions.h"

#include <algorithm>
#include <limits>

namespace health {

Text ServerCalls::call(SessionCall operation, TextView name, TextView parameter)
{
    try {
        m_desktop.setPointer(Pointer::Hourglass);
        Text reply = (m_objects.session().*operation)(name, parameter);
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

// The caller sets m_lastCall afterwards: the box runs the event loop, in which other calls may be made.
void ServerCalls::reportCall(TextView name, const Text& description)
{
    m_desktop.setPointer(Pointer::Default);
    m_messages.ErrorBox(L"Error in remote procedure call: " + Text(name) + Text(LineBreak) + description, SystemError);
}

ServerCalls::CallHint::CallHint(ServerCalls& server, std::span<const ExpectedCall> calls)
    : m_server(server)
{
    m_server.expectCalls(calls);
}

ServerCalls::CallHint::~CallHint() { m_server.expectCalls({}); }

void ServerCalls::expectCalls(std::span<const ExpectedCall> calls)
{
    try {
        if (m_objects.hasSession())
            m_objects.session().expectCalls(calls);
    } catch (...) {
        // Hints are best-effort.
    }
}

long long ServerCalls::RpcErrorCode(TextView reply)
{
    const long long code = roundToWhole(leadingNumber(pieceView(reply, L"^", 1)));
    return code < 0 ? -std::max(code, -std::numeric_limits<long long>::max()) : 0;
}

bool ServerCalls::CheckRpcError(TextView reply, TextView title)
{
    if (RpcErrorCode(reply) == 0)
        return false;
    TextView message = pieceView(reply, L"^", 2);
    // In a list reply the message ends with the line's CR LF.
    if (message.ends_with(LineBreak))
        message.remove_suffix(LineBreak.size());
    m_messages.ErrorBox(message, title);
    m_errors.SetStatusText(L"");
    return true;
}

void ServerCalls::ShowReport(TextView report, TextView title)
{
    try {
        m_objects.print().preview(report, title, L"", L"", L"", 80, true, true);
    } catch (...) {
        m_messages.ErrorBox(
            L"Error displaying requested report: " + Text(title) + Text(LineBreak) + describeCurrentFailure(),
            SystemError);
    }
}

void ServerCalls::ShowPages(Printout& pages)
{
    m_errors.trap(L"modShared", L"ShowPages", [&] {
        if (!m_objects.print().previewPages(pages))
            m_messages.InfoBox(L"This program cannot show or print " + pages.title() + L".", L"");
    });
}

void ServerCalls::VisitDetail(TextView visit)
{
    m_errors.trap(L"modShared", L"VisitDetail", [&] {
        if (visit.find_first_not_of(L' ') != TextView::npos)
            ShowReport(CallRpcList(L"MEVUTL GETRPT", visit), L"Visit Detail");
    });
}

}
