#include "platform/controls/mevZvDate.h"

namespace health {

Text mevZvDate::understood(TextView text, Moment now) const
{
    const auto moment = momentEntered(text, now, allowed(now));
    if (!moment)
        return Text(withoutBlanks(text));
    if (m_dateOnly)
        return dateText(*moment);
    return m_requireTime && givesTime(text, *moment) ? dateTimeText(*moment) : defaultDateText(*moment);
}

void mevZvDate::setValue(TextView value)
{
    const Text before = shown();
    m_typed.reset();
    m_value = value;
    if (before != m_value)
        notify(Change::Entry);
}

void mevZvDate::type(TextView text)
{
    if (!canBeUsed())
        return;
    m_touched = true;
    m_typed = text;
    noteEntry();
}

bool mevZvDate::settle() { return !m_typed || !m_clock || enter(*m_typed, m_clock()); }

bool mevZvDate::enter(TextView text, Moment now)
{
    if (!canBeUsed())
        return false;
    m_touched = true;
    noteEntry();
    const Text value = understood(text, now);
    const auto moment = momentEntered(text, now, allowed(now));
    const bool isRefused = value != m_value && m_requireTime && !value.empty() && !(moment && givesTime(text, *moment));
    const bool isNew = value != m_value && !value.empty();
    setValue(isRefused ? Text(m_value) : value);
    if (isRefused)
        raise(EntryRefused);
    else if (isNew)
        raise(NewDateEntered);
    return !isRefused && m_value == value;
}

}
