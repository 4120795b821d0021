#pragma once

#include "text/Dates.h"

namespace health {

// A date as the server sent it, with its precision.
struct RecordDate {
    enum class Precision {
        Year,
        Month,
        Day,
        Minute,
    };

    Moment start; // the beginning of the year, month, day or minute
    Precision precision = Precision::Day;

    // "2026", "03/2026", "03/18/2026", "03/18/2026 08:50"
    Text text() const;
    // The same without the time.
    Text dayText() const;

    bool operator==(const RecordDate&) const = default;
};

// Reads a FileMan date, whose month and day may be "00", or a date text such as "03/18/2026@08:50". Unlike summaries,
// it rolls nothing over: empty for an empty text, for one that is not a date, and for a day outside the calendar.
std::optional<RecordDate> readRecordDate(TextView text);

}
