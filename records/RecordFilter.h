// Which of the list's records are shown, and in which order.
#pragma once

#include "records/RecordList.h"
#include "text/FoldedLetters.h"

#include <map>
#include <optional>
#include <set>
#include <span>

namespace health {

enum class RecordOrder {
    AsLoaded,
    NewestFirst, // records without a date last
    ByKind, // kinds in the order of loading, each with the newest first
};

// A record is shown if it satisfies all parts.
struct RecordFilter {
    Text words = {}; // each occurs in the kind's label or in the summary, whatever its case and accents
    std::set<RecordTypeNumber> kinds = {}; // empty: all
    std::optional<int> year = {}; // records without a date belong to no year

    bool isEmpty() const { return foldedWords(words).empty() && kinds.empty() && !year; }
    bool operator==(const RecordFilter&) const = default;
};

// The moment that a record's date names, as the digits YYYYMMDDHHMMSS; an unknown month, day or time is 0. Empty
// without a readable date.
std::optional<long long> recordMoment(const ListedRecord& record);

// What a filter finds.
struct FoundRecords {
    std::vector<int> rows; // indices of the records, in the order asked for
    std::map<RecordTypeNumber, int> counts; // of the records that words and year leave, whatever the filter's kinds
    int undated = 0; // records that only lack a date to be shown
};

// Searches a list again and again: reads what it needs of each record once.
class RecordFinder {
public:
    // The records must outlive the next read().
    void read(std::span<const ListedRecord> records);

    FoundRecords find(const RecordFilter& filter, RecordOrder order);
    // The years of the records' dates, the latest first.
    const std::vector<int>& years();

private:
    void readTexts();
    void readMoments();
    std::optional<int> yearOf(int row) const;
    void sort(std::vector<int>& rows, RecordOrder order);

    std::span<const ListedRecord> m_records;
    Text m_letters; // all folded texts
    std::vector<std::size_t> m_ends; // of each record's text in m_letters
    std::vector<std::optional<long long>> m_moments;
    std::optional<std::vector<int>> m_years;
};

}
