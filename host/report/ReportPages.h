#pragma once

#include "host/report/Report.h"

#include <QString>
#include <QStringList>

class QPainter;
class QPrinter;

namespace health {

// The patient of a report and the user who prints it, as shown.
struct ReportPeople {
    QString heading; // the line that names the patient
    QString patient; // the name alone
    QString user;
};

// A report laid out on pages in a fixed font. Every page shows the title, the patient, the date, the user and the page
// number. If the text of a page names the patient, its heading does not repeat the name.
class ReportPages {
public:
    ReportPages(const Report& report, const ReportPeople& people);

    // The report's lines, wrapped at the width. A form feed is a line by itself and begins a page.
    const QStringList& lines() const { return m_lines; }

    // The rows of each page above its footer: the heading and the lines, at most `rows` together.
    QList<QStringList> pages(int rows) const;

    // Sets the paper size that is usual in the user's locale.
    static void setUsualPaper(QPrinter& printer);
    // Sets margins that keep the text away from the paper's edge.
    static void setMargins(QPrinter& printer);
    // Draws all pages and returns their number; 0 on failure. An output file is readable by the user only.
    int paint(QPrinter& printer) const;
    // Writes a PDF file; needs no printer. Throws Failure if it cannot be written.
    void savePdf(const QString& path) const;

private:
    QList<QStringList> pagesOf(int perPage) const;
    bool namesPatient(const QStringList& page) const;

    QStringList m_lines;
    QStringList m_heading; // on every page
    ReportPeople m_people;
    bool m_patientHeading;
    int m_lineWidth;
    bool m_pageNumbers;
};

}
