#include "control/RecordEvents.h"

#include "api/Events.h"
#include "text/Conversions.h"

#include <utility>

namespace health {

void RecordEvents::followPatient(long patientNumber)
{
    m_visitEventName = Text(RecordsEventPrefix) + wholeText(patientNumber);
    m_refusalEventName = Text(RefusalsEventPrefix) + wholeText(patientNumber);
    m_shared.session().registerEvent(m_visitEventName, m_sink);
    m_shared.session().registerEvent(m_refusalEventName, m_sink);
}

void RecordEvents::followRefresh()
{
    m_shared.session().registerEvent(RefreshEvent, m_sink);
    m_refreshRegistered = true;
}

void RecordEvents::followConnection()
{
    m_shared.session().registerEvent(ConnectionEvent, m_sink);
    m_connectionRegistered = true;
}

void RecordEvents::leavePatient(TextView procedure)
{
    if (!hasPatient())
        return;
    // Clear the names first, so that events of the old patient stop matching even if the session fails.
    const Text visitEventName = std::exchange(m_visitEventName, {});
    const Text refusalEventName = std::exchange(m_refusalEventName, {});
    // One trap each: a failure must not leave the other subscription in the session.
    for (const Text& name : { visitEventName, refusalEventName })
        m_shared.trap(m_module, procedure, [&] { m_shared.session().unregisterEvent(name, m_sink); });
}

void RecordEvents::leaveRefresh(TextView procedure)
{
    if (std::exchange(m_refreshRegistered, false))
        m_shared.trap(m_module, procedure, [&] { m_shared.session().unregisterEvent(RefreshEvent, m_sink); });
}

void RecordEvents::leaveConnection(TextView procedure)
{
    if (std::exchange(m_connectionRegistered, false))
        m_shared.trap(m_module, procedure, [&] { m_shared.session().unregisterEvent(ConnectionEvent, m_sink); });
}

bool RecordEvents::concerns(TextView eventName) const
{
    const auto below = [&](const Text& name) {
        return !name.empty() && MatchesLeading(eventName, name + L".", LetterCase::Exact);
    };
    return below(m_visitEventName) || below(m_refusalEventName)
        || MatchesLeading(eventName, RefreshEvent, LetterCase::Exact);
}

TextView RecordEvents::changedByOthers(TextView eventName, TextView data)
{
    const std::size_t last = eventName.rfind(L'.');
    const bool isOwn = data == OwnChange;
    return isOwn || last == TextView::npos ? TextView() : eventName.substr(last + 1);
}

}
