// The order of a list's records in time.
#pragma once

#include "records/RecordDate.h"
#include "records/RecordList.h"

#include <span>

namespace health {

// The last moment that a date can mean: of a year, a month or a day, its last second.
Moment lastMoment(const RecordDate& date);

// The day is known.
bool hasDay(const RecordDate& date);

// Certainly earlier. Neither of two equal days without times, nor of a month and a day in it, is before the other.
bool isBefore(const RecordDate& date, const RecordDate& other);

struct DatedRecord {
    int record = -1; // index in the list
    RecordDate date;
};

// Sorts the oldest first, and of equal dates the one that is further down in the list.
void sortByDate(std::vector<DatedRecord>& dated);

// The records of a kind over time.
struct DatedRecords {
    std::vector<DatedRecord> dated; // sorted
    std::vector<int> undated; // indices in the list of records whose date is missing or unreadable
};

DatedRecords datedRecords(std::span<const ListedRecord> records, RecordTypeNumber type);

// "on 06/10/2026 09:15", "in 09/2025"
Text whenText(const RecordDate& date);

// "1 visit has no readable date and is not drawn."; empty for 0. `unit`: the word for one of them.
Text undatedNote(std::size_t count, TextView unit);

// A coded text in proper case, as the list shows it; without its code.
Text shownWord(TextView piece);

// The texts that are not empty, with a separator between them.
Text joined(std::initializer_list<TextView> texts, TextView separator);

}
