#pragma once

#include "host/report/Report.h"

#include <QString>
#include <QStringList>

class QPainter;
class QPrinter;

namespace health {

// Whose report it is, and who prints it; as they are shown.
struct ReportPeople {
    QString heading; // names the patient
    QString patient; // the name alone
    QString user;
};

// A report laid out on pages in a fixed font; on every page the title, the patient, the day, the user and the page's
// number. Where the report's own text names the patient, the heading does not do so again.
class ReportPages {
public:
    ReportPages(const Report& report, const ReportPeople& people);

    // The report's lines, longer ones broken at the width; a form feed stands alone and begins a page.
    const QStringList& lines() const { return m_lines; }

    // What stands on each page above its foot, for pages of so many rows: the heading, then its share of the lines.
    QList<QStringList> pages(int rows) const;

    // Chooses the paper that is usual where the user lives.
    static void setUsualPaper(QPrinter& printer);
    // Text does not reach the paper's edge.
    static void setMargins(QPrinter& printer);
    // Draws all pages; gives their number, 0 when nothing can be drawn. A file that they go to is the user's alone.
    int paint(QPrinter& printer) const;
    // Writes a PDF file, with no printer needed; throws Failure when it cannot be written.
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
