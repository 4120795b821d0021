// The asthma records of a list in the order of time.
#pragma once

#include "records/CourseTable.h"
#include "records/RecordDate.h"
#include "records/RecordList.h"

#include <array>
#include <span>

namespace health {

// One asthma record. Lung values have no unit, because the system does not state it.
struct AsthmaReading {
    static constexpr std::size_t LungValues = 3;
    static constexpr std::array<TextView, LungValues> Captions { L"FEV 1", L"FEF 25-75", L"PEF" };

    std::size_t record = 0; // its index in the list
    RecordDate date;
    std::array<std::optional<double>, LungValues> lung; // empty if missing or unreadable
    std::array<Text, LungValues> lungTexts; // as sent, even if unreadable
    Text severity; // as the list shows it; may be empty
    int level = 0; // of the severity, 1 (mild intermittent) to 4 (severe persistent); 0 if it is unknown
};

struct AsthmaCourse {
    std::vector<AsthmaReading> readings; // the earliest first; those of one moment in the list's order
    std::vector<AsthmaReading> undated; // without a readable date, which have no place in time
};

AsthmaCourse asthmaCourse(std::span<const ListedRecord> records);

// Successive readings of one severity. Unknown severities belong to no run.
struct SeverityRun {
    int level = 0;
    std::size_t first = 0;
    std::size_t last = 0; // inclusive
};
std::vector<SeverityRun> severityRuns(const std::vector<AsthmaReading>& readings);

// Successive readings that all have the lung value, as first and last index: a curve is not drawn across a gap.
std::vector<std::pair<std::size_t, std::size_t>> lungRuns(const std::vector<AsthmaReading>& readings, std::size_t lung);

// The difference to the reading before, such as "+32", "−46" or "±0"; empty if either has no value, and if it is not
// certain which of the two came first.
Text lungChange(const std::vector<AsthmaReading>& readings, std::size_t index, std::size_t lung);

// A number as short as possible, with a minus sign: "93", "70.5", "−3".
Text chartNumber(double value);

// How far the registry's date due is: "in 50 days", "today", "20 days over". Empty without a date.
struct DueDistance {
    Text date; // "mm/dd/yyyy"
    Text words;
    bool isOver = false;
};
std::optional<DueDistance> dueDistance(TextView registryDue, Moment now);

CourseTable asthmaTable(const AsthmaCourse& course, const std::optional<DueDistance>& due);

}
