#pragma once

#include "host/report/PrintedDocument.h"
#include "host/report/Report.h"
#include "host/report/ReportText.h"

#include <QString>
#include <QStringList>

namespace health {

// A report laid out on pages. Every page shows the title, the patient, the visit that the report is about, the date of
// printing, the user and the page number.
class ReportPages : public PrintedDocument {
public:
    ReportPages(const Report& report, const ReportPeople& people);

    // The report's lines, wrapped at the width. A form feed is a line by itself and begins a page.
    const QStringList& lines() const { return m_lines; }
    // The lines that identify the patient and the visit on each page; empty if the report is not to show the patient.
    const QStringList& patient() const { return m_patient; }
    // The rows of each page between its heading and its footer, at most `perPage`.
    QList<QList<ReportRow>> pages(int perPage) const;

    QString title() const override { return m_titles.first(); }
    QString spokenText() const override;
    int paint(QPrinter& printer) const override;

private:
    QStringList m_lines;
    QList<ReportRow> m_rows;
    QStringList m_titles; // title and subtitles
    QStringList m_patient;
    QString m_user;
    int m_lineWidth;
    bool m_pageNumbers;
};

}
