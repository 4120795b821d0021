// The server's date form: YYYMMDD[.HHMMSS] with YYY = year - 1700, trailing zeros of the time dropped.
#pragma once

#include "text/Dates.h"

namespace health {

// The server stores dates of the years 1800 to 2699. All date fields except the registry's have narrower bounds.
bool isStorable(Moment moment);

enum class TimePart {
    Without,
    With,
};

// "mm/dd/yyyy" or "mm/dd/yyyy hh:mm" for a FileMan date or for a date text (in which "@" may precede the
// time); empty for an empty text, for one that is not a date and for a number outside the calendar.
// Fields out of their range roll over; seconds are dropped.
Text FMDateToDate(TextView text, TimePart timePart);

// The same, with the time if and only if the text has one: "." in a number, "@" or ":" in a text.
Text fmDateToDisplay(TextView text);

// FileMan text of a moment; empty for a year up to 1700.
Text fmDateOf(Moment moment, TimePart timePart);

}
