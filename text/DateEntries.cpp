#include "text/DateEntries.h"

#include "text/Conversions.h"
#include "text/Letters.h"

#include <algorithm>
#include <vector>

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

// Applies an offset, which may be missing; empty if the result would fall outside the supported years.
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

// The weekday of an upper-case name or its first three letters.
std::optional<weekday> weekdayNamed(TextView word)
{
    for (unsigned i = 0; i < WeekdayNames.size(); ++i) {
        const Text name = upperCase(WeekdayNames[i]);
        if (word == name || word == TextView(name).substr(0, 3))
            return weekday { i };
    }
    return std::nullopt;
}

Moment nearest(weekday wanted, Moment today, const DateRange& allowed)
{
    const Moment latest = today - (weekday { floor<days>(today) } - wanted);
    const Moment next = latest + weeks { 1 };
    return !allowed.contains(latest) && allowed.contains(next) ? next : latest;
}

// The day that an upper-case word or offset means; empty if it is neither.
std::optional<Moment> namedDay(TextView word, Moment today, const DateRange& allowed)
{
    if (word.empty())
        return std::nullopt;
    if (const auto wanted = weekdayNamed(word))
        return nearest(*wanted, today, allowed);
    if (word == L"YESTERDAY")
        return today - days { 1 };
    if (word == L"TOMORROW")
        return today + days { 1 };
    const std::size_t letters = word.starts_with(L"TODAY") ? 5 : word.starts_with(L"T") ? 1 : 0;
    const bool isOffset = word.front() == L'+' || word.front() == L'-';
    return letters > 0 || isOffset ? shifted(today, word.substr(letters)) : std::nullopt;
}

// The same as momentEntered, to the second.
std::optional<Moment> exactMoment(TextView text, Moment now, const DateRange& allowed)
{
    Text upper = upperCase(withoutBlanks(text));
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
    if (const auto day = namedDay(date, dateOf(now), allowed))
        return hasText(*day) ? parseDate(dateText(*day) + time) : std::nullopt;
    return parseDate(withSlashes(date) + time);
}

// Examples of all forms of an entry. What is missing of a date that has been begun is the end of one of them.
const std::vector<Text>& examples()
{
    static const std::vector<Text> texts = [] {
        std::vector<Text> all { L"1/01/2024 01:00", L"1012024", L"+1", L"-1", L"TODAY", L"YESTERDAY", L"TOMORROW",
            L"NOW", L"1 PM", L"2" };
        for (const TextView month : MonthNames)
            all.push_back(upperCase(month) + L" 1, 2024");
        for (const TextView day : WeekdayNames)
            all.push_back(upperCase(day));
        return all;
    }();
    return texts;
}

}

bool DateRange::contains(Moment moment) const
{
    const Moment day = dateOf(moment);
    return (!first || day >= dateOf(*first)) && (!last || day <= dateOf(*last));
}

std::optional<Moment> momentEntered(TextView text, Moment now, const DateRange& allowed)
{
    const auto moment = exactMoment(text, now, allowed);
    return moment ? std::optional<Moment>(floor<minutes>(*moment)) : std::nullopt;
}

bool givesTime(TextView text, Moment moment)
{
    const Text upper = upperCase(withoutBlanks(text));
    const bool isNow =
        upper == L"N" || upper.starts_with(L"NOW") || upper.starts_with(L"N+") || upper.starts_with(L"N-");
    return isNow || hasTime(moment) || text.find(L':') != TextView::npos;
}

bool isDateBegun(TextView text, Moment now)
{
    for (const TextView example : examples()) {
        for (std::size_t at = 0; at <= example.size(); ++at) {
            if (momentEntered(Text(text).append(example.substr(at)), now))
                return true;
        }
    }
    return false;
}

TextView withoutBlanks(TextView text)
{
    const std::size_t start = text.find_first_not_of(L' ');
    return start == TextView::npos ? TextView() : text.substr(start, text.find_last_not_of(L' ') - start + 1);
}

}
