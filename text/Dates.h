// Civil dates and times, and the platform's date parser. No time zones and no daylight saving.
#pragma once

#include "api/Text.h"

#include <array>
#include <chrono>
#include <optional>

namespace health {

inline constexpr std::array<TextView, 12> MonthNames { L"January", L"February", L"March", L"April", L"May", L"June",
    L"July", L"August", L"September", L"October", L"November", L"December" };
inline constexpr std::array<TextView, 7> WeekdayNames { L"Sunday", L"Monday", L"Tuesday", L"Wednesday", L"Thursday",
    L"Friday", L"Saturday" };

// A civil date with its time of day, to the second.
using Moment = std::chrono::local_seconds;

// A moment from its fields; a field out of its range rolls over into the next larger one (month 0 is
// December of the year before, day 0 the last day of the month before, hour 24 the next day).
Moment momentOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

// The moment's date at midnight.
Moment dateOf(Moment moment);

bool hasTime(Moment moment);

// The moment is in the years that a date text can contain, 100 to 9999.
bool hasText(Moment moment);

// Reads a date with an optional time: "m/d/yyyy", "mm/dd/yy" (00 to 29 is 20xx), "JAN 2, 2006",
// each with "hh:mm[:ss]" and "AM" or "PM" after blanks. Day and month must be in range: 02/30 is
// not a date. Neither is a bare FileMan number.
std::optional<Moment> parseDate(TextView text);

inline bool isDate(TextView text) { return parseDate(text).has_value(); }

// Texts of a moment for which hasText() holds.
Text dateText(Moment moment); // "mm/dd/yyyy"
Text dateTimeText(Moment moment); // "mm/dd/yyyy hh:mm", seconds dropped
Text defaultDateText(Moment moment); // with the time unless it is midnight

}
