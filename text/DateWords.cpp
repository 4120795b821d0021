#include "text/DateWords.h"

#include "text/Conversions.h"

namespace health {

using namespace std::chrono;

namespace {

TextView monthOf(const year_month_day& date) { return MonthNames[static_cast<unsigned>(date.month()) - 1]; }

TextView weekdayOf(Moment moment) { return WeekdayNames[weekday { floor<days>(moment) }.c_encoding()]; }

// "24, 2026"
Text dayAndYear(const year_month_day& date)
{
    return wholeText(static_cast<unsigned>(date.day())) + L", " + wholeText(static_cast<int>(date.year()));
}

Text timeText(Moment moment) { return dateTimeText(moment).substr(11); }

// The number of months between two days, rounded to the nearest.
int nearestMonths(Moment earlier, Moment later)
{
    const year_month_day from { floor<days>(earlier) };
    const year_month_day to { floor<days>(later) };
    const int ahead = static_cast<int>((to.year() / to.month() - from.year() / from.month()).count());
    const int spareDays =
        static_cast<int>(static_cast<unsigned>(to.day())) - static_cast<int>(static_cast<unsigned>(from.day()));
    return ahead + (spareDays >= 15) - (spareDays <= -15);
}

// "17 weeks", without the direction.
Text span(Moment earlier, Moment later)
{
    constexpr int mostDays = 14;
    constexpr int mostWeekDays = 26 * 7;
    constexpr int mostMonths = 24;
    const auto apart = floor<days>(later) - floor<days>(earlier);
    if (apart < days { mostDays })
        return counted(apart.count(), L"day");
    if (apart < days { mostWeekDays })
        return counted(floor<weeks>(apart).count(), L"week");
    const int months = nearestMonths(earlier, later);
    return months < mostMonths ? counted(months, L"month") : counted(months / 12, L"year");
}

Text dayText(Moment moment, Moment now) { return dateOf(moment) == dateOf(now) ? Text(L"today") : dateText(moment); }

}

Text dayName(Moment moment)
{
    const year_month_day date { floor<days>(moment) };
    return Text(weekdayOf(moment).substr(0, 3)) + L' ' + Text(monthOf(date).substr(0, 3)) + L' ' + dayAndYear(date);
}

Text fullDayName(Moment moment)
{
    const year_month_day date { floor<days>(moment) };
    return Text(weekdayOf(moment)) + L", " + Text(monthOf(date)) + L' ' + dayAndYear(date);
}

Text counted(long long count, TextView unit)
{
    return wholeText(count) + L' ' + Text(unit) + (count == 1 ? L"" : L"s");
}

Text distanceName(Moment moment, Moment now)
{
    const auto ahead = floor<days>(moment) - floor<days>(now);
    if (ahead == days { 0 })
        return L"today";
    if (ahead == days { -1 })
        return L"yesterday";
    if (ahead == days { 1 })
        return L"tomorrow";
    return ahead > days { 0 } ? L"in " + span(now, moment) : span(moment, now) + L" ago";
}

Text dateWords(Moment moment, Moment now, TimePart timePart)
{
    const Text words = dayName(moment) + L" \u00B7 " + distanceName(moment, now);
    return timePart == TimePart::With ? words + L", " + timeText(moment) : words;
}

Text rangeWords(const DateRange& allowed, Moment now)
{
    if (!allowed.first && !allowed.last)
        return {};
    if (!allowed.first)
        return L"allowed: up to " + dayText(*allowed.last, now);
    if (!allowed.last)
        return L"allowed: from " + dayText(*allowed.first, now);
    return L"allowed: " + dayText(*allowed.first, now) + L" to " + dayText(*allowed.last, now);
}

}
