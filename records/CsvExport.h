// Records as tables: files for spreadsheet programs, and rows for the clipboard.
#pragma once

#include "records/ExportSubject.h"

#include <string>

namespace health {

// One kind of record as a table, comma-separated with CR LF (RFC 4180): a row of headings, then a row a record. The
// text is UTF-8 and begins with a byte order mark, without which spreadsheet programs on Windows read letters with
// accents wrong.
struct CsvFile {
    TextView kind; // see kindName()
    std::string bytes;
};

// One file for each kind that is among the records, in the order of their first records; the rows keep the records'
// order. Dates are "2026-03-10" or "2026-03-10 14:30", inexact ones "2026-03" or "2026"; a date that cannot be read
// stays as stored. A cell that a spreadsheet program would take for a formula begins with an apostrophe.
std::vector<CsvFile> csvFiles(const ExportSubject& subject, const ExportedRecords& exported);

// The cell of a table: with an apostrophe before it if a spreadsheet program could take it for a formula.
Text guardedCell(TextView text);

// A record in one line of cells separated by tabs: kind, date, then each field that is not empty with its caption, as
// in "Severity=Mild Persistent". For the clipboard.
Text copiedRecord(const ListedRecord& record);

}
