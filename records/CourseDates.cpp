#include "records/CourseDates.h"

#include "text/DateWords.h"
#include "text/Letters.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

using Precision = RecordDate::Precision;

Moment startOfNext(const RecordDate& date)
{
    const year_month_day day { floor<days>(date.start) };
    const int year = static_cast<int>(day.year());
    if (date.precision == Precision::Year)
        return momentOf(year + 1, 1, 1);
    return date.precision == Precision::Month
        ? momentOf(year, static_cast<int>(static_cast<unsigned>(day.month())) + 1, 1)
        : dateOf(date.start) + days { 1 };
}

}

Moment lastMoment(const RecordDate& date)
{
    return date.precision == Precision::Minute ? date.start : startOfNext(date) - seconds { 1 };
}

bool hasDay(const RecordDate& date) { return date.precision >= Precision::Day; }

bool isBefore(const RecordDate& date, const RecordDate& other) { return lastMoment(date) < other.start; }

void sortByDate(std::vector<DatedRecord>& dated)
{
    std::ranges::sort(dated, [](const DatedRecord& one, const DatedRecord& other) {
        return one.date.start != other.date.start ? one.date.start < other.date.start : one.record > other.record;
    });
}

DatedRecords datedRecords(std::span<const ListedRecord> records, RecordTypeNumber type)
{
    DatedRecords found;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i].type->number != type)
            continue;
        const int record = static_cast<int>(i);
        if (const auto date = readRecordDate(recordDate(records[i])))
            found.dated.push_back({ record, *date });
        else
            found.undated.push_back(record);
    }
    sortByDate(found.dated);
    return found;
}

Text whenText(const RecordDate& date) { return (hasDay(date) ? L"on " : L"in ") + date.text(); }

Text undatedNote(std::size_t count, TextView unit)
{
    if (count == 0)
        return {};
    return counted(static_cast<long long>(count), unit)
        + (count == 1 ? L" has no readable date and is not drawn." : L" have no readable date and are not drawn.");
}

Text shownWord(TextView piece) { return properCase(displayPart(piece), WordStart::AfterBlankOrComma); }

Text joined(std::initializer_list<TextView> texts, TextView separator)
{
    Text whole;
    for (const TextView text : texts) {
        if (!text.empty())
            whole += (whole.empty() ? Text() : Text(separator)) + Text(text);
    }
    return whole;
}

}
