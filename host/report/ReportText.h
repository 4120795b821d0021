// The text of a report as the rows that are printed.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace health {

struct ReportRow {
    enum class Kind {
        Fixed, // in the fixed font, as it is
        Heading, // of a section
        Pair, // a caption and its value
        PageBreak, // not printed: the next row begins a page
    };

    Kind kind = Kind::Fixed;
    QString caption; // of a pair
    QString text; // the line; of a pair, the value

    bool operator==(const ReportRow&) const = default;
};

// The rows of a report's lines, a row for each line. Lines between two empty ones become pairs only if all of them are
// a caption and one value, so that tables and running text keep their layout. Only blanks are dropped, never letters.
QList<ReportRow> reportRows(const QStringList& lines);

// "Visit 11/21/2026 08:15, PEDIATRIC CLINIC" if the report is about a visit and says when and where it was, else empty.
QString reportedVisit(const QStringList& lines);

}
