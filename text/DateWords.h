// Dates in words.
#pragma once

#include "text/DateEntries.h"
#include "text/FileManDates.h"

namespace health {

Text dayName(Moment moment); // "Fri Jul 24, 2026"
Text fullDayName(Moment moment); // "Friday, July 24, 2026"

// "1 day", "3 days"
Text counted(long long count, TextView unit);

// The distance of a day from today: "today", "yesterday", "5 days ago", "in 22 weeks", "10 months ago", "in 3 years".
// Below two weeks it counts days, below half a year completed weeks, below two years the nearest months.
Text distanceName(Moment moment, Moment now);

// "Fri Jul 24, 2026 · 17 weeks ago", and with the time "Fri Nov 20, 2026 · yesterday, 22:45".
Text dateWords(Moment moment, Moment now, TimePart timePart);

// "allowed: up to today", "allowed: 11/22/2025 to today"; empty if the range is open on both sides.
Text rangeWords(const DateRange& allowed, Moment now);

}
