#include "platform/controls/mevZvDate.h"

#include "text/Conversions.h"
#include "text/Letters.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

// Adds months; where the day does not exist, uses the last day of the month.
Moment addMonths(Moment moment, int count)
{
    const year_month_day date { floor<days>(moment) };
    year_month_day moved = date + months { count };
    if (!moved.ok())
        moved = moved.year() / moved.month() / last;
    return local_days { moved } + (moment - dateOf(moment));
}

// Applies an offset like "+3" or "-2W" (days, weeks, months, years); empty if it is malformed.
std::optional<Moment> moved(Moment start, TextView offset)
{
    const bool negative = offset.front() == L'-';
    if (!negative && offset.front() != L'+')
        return std::nullopt;
    offset.remove_prefix(1);
    const std::size_t digits = std::min(offset.find_first_not_of(L"0123456789"), offset.size());
    if (digits == 0 || digits > 4)
        return std::nullopt;
    const int count = static_cast<int>(leadingNumber(offset.substr(0, digits))) * (negative ? -1 : 1);
    const TextView unit = offset.substr(digits);
    if (unit.empty() || unit == L"D")
        return start + days { count };
    if (unit == L"W")
        return start + weeks { count };
    if (unit == L"M")
        return addMonths(start, count);
    if (unit == L"Y")
        return addMonths(start, count * 12);
    return std::nullopt;
}

// Applies the offset after "T" or "N", which may be missing; empty if the result would fall outside the supported
// years.
std::optional<Moment> shifted(Moment start, TextView offset)
{
    const auto moment = offset.empty() ? start : moved(start, offset);
    return moment && hasText(*moment) ? moment : std::nullopt;
}

// Inserts slashes into "010206" and "01022006"; returns any other text unchanged.
Text withSlashes(TextView date)
{
    const bool digits = !date.empty() && date.find_first_not_of(L"0123456789") == TextView::npos;
    if (!digits || (date.size() != 6 && date.size() != 8))
        return Text(date);
    return Text(date.substr(0, 2)) + L"/" + Text(date.substr(2, 2)) + L"/" + Text(date.substr(4));
}

TextView trimmed(TextView text)
{
    const std::size_t start = text.find_first_not_of(L' ');
    return start == TextView::npos ? TextView() : text.substr(start, text.find_last_not_of(L' ') - start + 1);
}

// The entry contains a time of day, even midnight: "hh:mm" or "now".
bool givesTime(TextView text, Moment moment)
{
    const Text upper = upperCase(trimmed(text));
    const bool isNow =
        upper == L"N" || upper.starts_with(L"NOW") || upper.starts_with(L"N+") || upper.starts_with(L"N-");
    return isNow || hasTime(moment) || text.find(L':') != TextView::npos;
}

// The same as momentEntered, to the second.
std::optional<Moment> exactMoment(TextView text, Moment now)
{
    Text upper = upperCase(trimmed(text));
    std::replace(upper.begin(), upper.end(), L'@', L' ');
    const std::size_t blank = std::min(upper.find(L' '), upper.size());
    const Text date = upper.substr(0, blank);
    const Text time = upper.substr(blank);
    const std::size_t current = date.starts_with(L"NOW") ? 3 : date.starts_with(L"N") ? 1 : 0;
    if (current > 0 && time.empty()) {
        // "NOV 2, 2006" begins with an N too.
        if (const auto moment = shifted(now, TextView(date).substr(current)))
            return moment;
    }
    const std::size_t today = date.starts_with(L"TODAY") ? 5 : date.starts_with(L"T") ? 1 : 0;
    if (today > 0) {
        const auto moment = shifted(dateOf(now), TextView(date).substr(today));
        return moment ? parseDate(dateText(*moment) + time) : std::nullopt;
    }
    return parseDate(withSlashes(date) + time);
}

}

std::optional<Moment> momentEntered(TextView text, Moment now)
{
    const auto moment = exactMoment(text, now);
    return moment ? std::optional<Moment>(floor<minutes>(*moment)) : std::nullopt;
}

Text mevZvDate::understood(TextView text, Moment now) const
{
    const auto moment = momentEntered(text, now);
    if (!moment)
        return Text(trimmed(text));
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
    const Text value = understood(text, now);
    const auto moment = momentEntered(text, now);
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
