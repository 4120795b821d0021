#include "records/RecordFilter.h"

#include "text/Conversions.h"
#include "text/Dates.h"
#include "text/FileManDates.h"
#include "text/Letters.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace health {

namespace {

constexpr long long YearUnit = 10'000'000'000;

long long digitsOf(Moment moment)
{
    using namespace std::chrono;
    const year_month_day date { floor<days>(moment) };
    const hh_mm_ss time { moment - dateOf(moment) };
    return static_cast<int>(date.year()) * YearUnit + static_cast<unsigned>(date.month()) * 100'000'000LL
        + static_cast<unsigned>(date.day()) * 1'000'000LL + time.hours().count() * 10'000LL
        + time.minutes().count() * 100LL + time.seconds().count();
}

// The digits of "yyymmdd[.hhmmss]"; empty for any other form.
std::optional<long long> momentOfNumber(TextView text)
{
    constexpr std::size_t dateDigits = 7;
    constexpr std::size_t timeDigits = 6;
    const TextView date = text.substr(0, text.find(L'.'));
    const TextView time = text.substr(std::min(text.size(), date.size() + 1));
    const auto digits = [](TextView part) { return std::all_of(part.begin(), part.end(), isDigit); };
    if (date.size() != dateDigits || time.size() > timeDigits || !digits(date) || !digits(time))
        return std::nullopt;
    long long number = 0;
    for (const wchar_t digit : date)
        number = number * 10 + (digit - L'0');
    for (std::size_t i = 0; i < timeDigits; ++i)
        number = number * 10 + (i < time.size() ? time[i] - L'0' : 0);
    return number + 1700 * YearUnit;
}

bool hasAll(TextView text, const std::vector<Text>& words)
{
    return std::all_of(words.begin(), words.end(), [&](const Text& word) { return text.find(word) != TextView::npos; });
}

}

std::optional<long long> recordMoment(const ListedRecord& record)
{
    const TextView text = recordDate(record);
    if (text.empty())
        return std::nullopt;
    if (const auto number = momentOfNumber(text))
        return number;
    const auto moment = parseDate(FMDateToDate(text, TimePart::With));
    return moment ? std::optional(digitsOf(*moment)) : std::nullopt;
}

void RecordFinder::read(std::span<const ListedRecord> records)
{
    m_records = records;
    m_letters.clear();
    m_ends.clear();
    m_moments.clear();
    m_years.reset();
}

void RecordFinder::readTexts()
{
    if (m_ends.size() == m_records.size())
        return;
    for (const ListedRecord& record : m_records) {
        appendFolded(m_letters, record.label);
        m_letters += L'\n'; // no word contains it
        appendFolded(m_letters, record.summary);
        m_ends.push_back(m_letters.size());
    }
}

void RecordFinder::readMoments()
{
    if (m_moments.size() != m_records.size())
        std::transform(m_records.begin(), m_records.end(), std::back_inserter(m_moments), recordMoment);
}

std::optional<int> RecordFinder::yearOf(int row) const
{
    const auto& moment = m_moments[static_cast<std::size_t>(row)];
    return moment ? std::optional(static_cast<int>(*moment / YearUnit)) : std::nullopt;
}

const std::vector<int>& RecordFinder::years()
{
    if (m_years)
        return *m_years;
    readMoments();
    std::set<int, std::greater<>> years;
    for (int row = 0; row < std::ssize(m_moments); ++row) {
        if (const auto year = yearOf(row))
            years.insert(*year);
    }
    return m_years.emplace(years.begin(), years.end());
}

FoundRecords RecordFinder::find(const RecordFilter& filter, RecordOrder order)
{
    const std::vector<Text> words = foldedWords(filter.words);
    if (!words.empty())
        readTexts();
    if (filter.year || order != RecordOrder::AsLoaded)
        readMoments();
    FoundRecords found;
    std::size_t start = 0;
    for (int row = 0; row < std::ssize(m_records); ++row) {
        const auto index = static_cast<std::size_t>(row);
        if (!words.empty()) {
            const std::size_t begin = std::exchange(start, m_ends[index]);
            if (!hasAll(TextView(m_letters).substr(begin, start - begin), words))
                continue;
        }
        const RecordTypeNumber kind = m_records[index].type->number;
        const bool isOfKind = filter.kinds.empty() || filter.kinds.contains(kind);
        if (filter.year && yearOf(row) != filter.year) {
            found.undated += isOfKind && !yearOf(row);
            continue;
        }
        ++found.counts[kind];
        if (isOfKind)
            found.rows.push_back(row);
    }
    sort(found.rows, order);
    return found;
}

void RecordFinder::sort(std::vector<int>& rows, RecordOrder order)
{
    if (order == RecordOrder::AsLoaded)
        return;
    std::vector<RecordTypeNumber> kinds; // in the order of loading
    for (const ListedRecord& record : m_records) {
        if (std::find(kinds.begin(), kinds.end(), record.type->number) == kinds.end())
            kinds.push_back(record.type->number);
    }
    // The greater the later; an unknown time is the earliest of its day, and an unknown day the earliest of its month.
    const auto age = [&](int row) { return m_moments[static_cast<std::size_t>(row)].value_or(-1); };
    const auto kind = [&](int row) {
        const RecordTypeNumber number = m_records[static_cast<std::size_t>(row)].type->number;
        return order == RecordOrder::ByKind ? std::find(kinds.begin(), kinds.end(), number) : kinds.begin();
    };
    std::stable_sort(rows.begin(), rows.end(),
        [&](int a, int b) { return kind(a) != kind(b) ? kind(a) < kind(b) : age(a) > age(b); });
}

}
