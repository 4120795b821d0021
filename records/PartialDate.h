// Stored dates with the precision that they have.
#pragma once

#include "text/Dates.h"

#include <optional>

namespace health {

// A date of the calendar: a year, a year and a month, or a day, perhaps with its time.
struct PartialDate {
    int year = 0;
    int month = 0; // 0: unknown
    int day = 0; // 0: unknown
    std::optional<Moment> time; // to the minute or second; never for an inexact date

    bool isExact() const { return day != 0; }
};

// Reads a date as the server stores or replies it: "yyymmdd[.hhmmss]" with year minus 1700, or "mm/dd/yyyy", with
// "@hh:mm" or " hh:mm" after an exact one; day or month may be "00". Empty for any other text and for a day that the
// calendar does not have. Midnight as "24" is the end of the day and counts as a date without a time.
std::optional<PartialDate> storedDate(TextView text);

// Reads "yyyy-mm-dd", "yyyy-mm" or "yyyy"; empty for any other text.
std::optional<PartialDate> isoDate(TextView text);

// "2026-03-10", "2026-03" or "2026": the date without its time.
Text isoText(const PartialDate& date);

// "14:30", or "14:30:05" if the seconds are not 0.
Text clockText(Moment time);

}
