#include "shared/KeptEntries.h"

#include "api/Events.h"

namespace health {

void KeptEntries::noteSaved(TextView kind, TextView record, TextView what)
{
    m_saved = { Text(kind), Text(record), m_saved.sequence + 1 };
    raise(SavedEvent, what);
}

void KeptEntries::keepEntry(TextView offer, std::function<void()> reopen)
{
    m_kept.push_back({ Text(offer), std::move(reopen) });
    offerLast();
}

void KeptEntries::reopenEntry()
{
    if (m_kept.empty())
        return;
    const Kept last = std::move(m_kept.back());
    m_kept.pop_back();
    offerLast();
    last.reopen();
}

void KeptEntries::forgetEntries()
{
    if (m_kept.empty())
        return;
    m_kept.clear();
    offerLast();
}

void KeptEntries::offerLast() { raise(DiscardedEvent, m_kept.empty() ? TextView() : TextView(m_kept.back().offer)); }

void KeptEntries::raise(TextView event, TextView data)
{
    try {
        if (m_objects.hasSession())
            m_objects.session().raiseEvent(event, data);
    } catch (...) {
        // The save itself has succeeded, or its failure was reported.
    }
}

}
