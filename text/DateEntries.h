// What users type for a date.
#pragma once

#include "text/Dates.h"

namespace health {

// The days that a field accepts, both included; empty ends are open.
struct DateRange {
    std::optional<Moment> first;
    std::optional<Moment> last;

    bool contains(Moment moment) const;
};

// Reads an entry to the minute: a date, six or eight digits such as 010206 or 01022006, "T" or "TODAY" for today,
// "YESTERDAY", "TOMORROW", "N" or "NOW", each of T and N with an offset ("T-3", "T+2W", "T-1M", "T+1Y"), an offset
// alone, counted from today, or a weekday ("FRI", "FRIDAY"). A time may follow after a blank or "@", except after "N".
// A weekday is the latest such day, today included, if that is `allowed`, else the next one if that is. Letters may be
// in any case. Empty if the text is nothing of this.
std::optional<Moment> momentEntered(TextView text, Moment now, const DateRange& allowed = {});

// The entry of this moment contains a time of day, even midnight: "hh:mm" or "now".
bool givesTime(TextView text, Moment moment);

// The text is a date or the beginning of one.
bool isDateBegun(TextView text, Moment now);

// The text without the blanks around it.
TextView withoutBlanks(TextView text);

}
