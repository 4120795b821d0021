#include "shared/ErrorReports.h"

#include "api/Events.h"
#include "text/Pieces.h"

namespace health {

void ErrorReports::ReportError(TextView module, TextView procedure)
{
    // First: clearing the status line calls the host, which may throw too.
    const Text description = describeCurrentFailure();
    m_desktop.setPointer(Pointer::Default);
    try {
        raiseStatus(L"");
    } catch (...) {
        // Ignore this failure; the box reports the original one.
    }
    m_messages.ErrorBox(L"Error in module " + Text(module) + L" at " + Text(procedure) + Text(LineBreak)
            + Text(LineBreak) + description,
        SystemError);
}

bool ErrorReports::trap(TextView module, TextView procedure, const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (...) {
        ReportError(module, procedure);
        return false;
    }
}

void ErrorReports::SetStatusText(TextView text)
{
    trap(L"modShared", L"SetStatusText", [&] { raiseStatus(text); });
}

void ErrorReports::raiseStatus(TextView text)
{
    if (m_objects.hasSession())
        m_objects.session().raiseEvent(StatusEvent, text);
}

}
