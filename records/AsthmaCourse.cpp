#include "records/AsthmaCourse.h"

#include "records/CourseDates.h"
#include "text/Conversions.h"
#include "text/DateWords.h"
#include "text/Letters.h"
#include "text/Pieces.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace health {

namespace {

constexpr PieceNumber SeverityPiece = 4;
constexpr PieceNumber FirstLungPiece = 5;
constexpr double LargestValue = 1e6; // what is larger is no measurement
constexpr std::array<TextView, 4> Severities { L"Mild Intermittent", L"Mild Persistent", L"Moderate Persistent",
    L"Severe Persistent" };

int levelOf(TextView piece)
{
    const TextView code = codePart(piece);
    if (code.size() == 1 && code.front() >= L'1' && code.front() <= L'4')
        return code.front() - L'0';
    const TextView words = displayPart(piece);
    const auto found = std::find_if(
        Severities.begin(), Severities.end(), [&](TextView severity) { return equalIgnoringCase(severity, words); });
    return found == Severities.end() ? 0 : static_cast<int>(found - Severities.begin()) + 1;
}

std::optional<double> lungValue(TextView text)
{
    const auto value = numericValue(text);
    return value && std::abs(*value) < LargestValue ? value : std::nullopt;
}

AsthmaReading readingOf(const ListedRecord& record, std::size_t index)
{
    const LinePieces pieces(record.line);
    AsthmaReading reading;
    reading.record = index;
    for (std::size_t lung = 0; lung < AsthmaReading::LungValues; ++lung) {
        const TextView text = displayPart(pieces[FirstLungPiece + static_cast<PieceNumber>(lung)]);
        reading.lungTexts[lung] = text;
        reading.lung[lung] = lungValue(text);
    }
    reading.severity = properCase(displayPart(pieces[SeverityPiece]), WordStart::AfterBlankOrComma);
    reading.level = levelOf(pieces[SeverityPiece]);
    return reading;
}

// Successive readings with the same value of `kind`; 0 belongs to no run.
template<typename Kind, typename Add>
void forEachRun(std::size_t count, Kind kind, Add add)
{
    for (std::size_t first = 0; first < count;) {
        std::size_t next = first + 1;
        while (next < count && kind(next) == kind(first))
            ++next;
        if (kind(first) != 0)
            add(first, next - 1);
        first = next;
    }
}

std::vector<Text> tableRow(const AsthmaReading& reading, Text date)
{
    std::vector<Text> row { std::move(date) };
    row.insert(row.end(), reading.lungTexts.begin(), reading.lungTexts.end());
    row.push_back(reading.severity);
    return row;
}

}

AsthmaCourse asthmaCourse(std::span<const ListedRecord> records)
{
    AsthmaCourse course;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i].type->number != RecordTypeNumber::Asthma)
            continue;
        AsthmaReading reading = readingOf(records[i], i);
        const auto date = readRecordDate(recordDate(records[i]));
        if (date)
            reading.date = *date;
        (date ? course.readings : course.undated).push_back(std::move(reading));
    }
    std::stable_sort(course.readings.begin(), course.readings.end(),
        [](const AsthmaReading& one, const AsthmaReading& other) { return one.date.start < other.date.start; });
    return course;
}

std::vector<SeverityRun> severityRuns(const std::vector<AsthmaReading>& readings)
{
    std::vector<SeverityRun> runs;
    forEachRun(
        readings.size(), [&](std::size_t i) { return readings[i].level; },
        [&](std::size_t first, std::size_t last) {
            runs.push_back({ readings[first].level, first, last });
        });
    return runs;
}

std::vector<std::pair<std::size_t, std::size_t>> lungRuns(const std::vector<AsthmaReading>& readings, std::size_t lung)
{
    std::vector<std::pair<std::size_t, std::size_t>> runs;
    forEachRun(
        readings.size(), [&](std::size_t i) { return readings[i].lung[lung].has_value(); },
        [&](std::size_t first, std::size_t last) { runs.emplace_back(first, last); });
    return runs;
}

Text lungChange(const std::vector<AsthmaReading>& readings, std::size_t index, std::size_t lung)
{
    if (index == 0 || !readings[index].lung[lung] || !readings[index - 1].lung[lung]
        || !isBefore(readings[index - 1].date, readings[index].date))
        return {};
    const Text change = chartNumber(*readings[index].lung[lung] - *readings[index - 1].lung[lung]);
    if (change == L"0")
        return L"\u00B10";
    return change.front() == L'\u2212' ? change : L'+' + change;
}

Text chartNumber(double value)
{
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.3f", std::abs(value));
    Text text(digits, digits + std::char_traits<char>::length(digits));
    std::replace(text.begin(), text.end(), L',', L'.'); // a locale may have set another decimal sign
    text.resize(text.find_last_not_of(L'0') + 1);
    if (text.ends_with(L'.'))
        text.pop_back();
    return value < 0 && text != L"0" ? L'\u2212' + text : text;
}

std::optional<DueDistance> dueDistance(TextView registryDue, Moment now)
{
    using namespace std::chrono;
    const auto due = readRecordDate(registryDue);
    if (!due || due->precision < RecordDate::Precision::Day)
        return std::nullopt;
    const auto left = (floor<days>(due->start) - floor<days>(now)).count();
    DueDistance distance { due->dayText(), L"today", left < 0 };
    if (left > 0)
        distance.words = L"in " + counted(left, L"day");
    else if (left < 0)
        distance.words = counted(-left, L"day") + L" over";
    return distance;
}

CourseTable asthmaTable(const AsthmaCourse& course, const std::optional<DueDistance>& due)
{
    CourseTable table;
    table.title = L"Asthma Status";
    if (due)
        table.title += L". Calculated Date Due " + due->date + L", " + due->words;
    table.headings.emplace_back(L"Date");
    table.headings.insert(table.headings.end(), AsthmaReading::Captions.begin(), AsthmaReading::Captions.end());
    table.headings.emplace_back(L"Severity");
    for (const AsthmaReading& reading : course.readings)
        table.rows.push_back(tableRow(reading, reading.date.text()));
    for (const AsthmaReading& reading : course.undated)
        table.rows.push_back(tableRow(reading, {}));
    return table;
}

}
