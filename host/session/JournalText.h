// The call journal in words. Nothing here reads the parameters and replies that a user may unlock.
#pragma once

#include "host/session/CallJournal.h"

#include <QString>
#include <QStringList>

namespace health {

// The columns of the journal's table, and the headings of the file.
namespace JournalColumn {
enum : int {
    Time,
    Name,
    Duration,
    Sent,
    Received,
    Result,
    Count,
};
}
const QStringList& journalHeadings();

// The text of a column: times of day with milliseconds, durations in milliseconds, sizes in bytes.
QString journalText(const JournalEntry& entry, int column);

// "312 calls, 2 of them not answered, 1 slow; median 1.8 ms, slowest 1,240.5 ms". `calls` may be 0.
QString journalSums(const CallJournal::Sums& sums);

// All entries as a table in UTF-8, with commas between the columns; free of patients' data even while the journal is
// unlocked.
QByteArray journalFile(const CallJournal& journal);

}
