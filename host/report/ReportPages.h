#pragma once

#include "host/report/Report.h"
#include "host/report/ReportText.h"

#include <QString>
#include <QStringList>

class QPrinter;

namespace health {

// The patient of a report and the user who prints it, as shown.
struct ReportPeople {
    QStringList patient; // the name, then what else identifies the patient, a line each
    QString user;
};

// A report laid out on pages. Every page shows the title, the patient, the visit that the report is about, the date of
// printing, the user and the page number.
class ReportPages {
public:
    ReportPages(const Report& report, const ReportPeople& people);

    // The report's lines, wrapped at the width. A form feed is a line by itself and begins a page.
    const QStringList& lines() const { return m_lines; }
    // The lines that identify the patient and the visit on each page; empty if the report is not to show the patient.
    const QStringList& patient() const { return m_patient; }
    // The rows of each page between its heading and its footer, at most `perPage`.
    QList<QList<ReportRow>> pages(int perPage) const;

    // Sets the paper size that is usual in the user's locale.
    static void setUsualPaper(QPrinter& printer);
    // Sets margins that keep the text away from the paper's edge.
    static void setMargins(QPrinter& printer);
    // Draws all pages and returns their number; 0 on failure. An output file is readable by the user only.
    int paint(QPrinter& printer) const;
    // Writes a PDF file; needs no printer. Throws Failure if it cannot be written.
    void savePdf(const QString& path) const;

private:
    QString printedBy() const;

    QStringList m_lines;
    QList<ReportRow> m_rows;
    QStringList m_titles; // title and subtitles
    QStringList m_patient;
    QString m_user;
    int m_lineWidth;
    bool m_pageNumbers;
};

}
