#pragma once

#include <QString>
#include <QStringList>

class QPainter;
class QPrinter;

namespace health {

// A report as the host is asked to show it.
struct Report {
    QString text; // lines; a form feed begins a page
    QString title;
    QStringList subtitles;
    int lineWidth = 80; // characters
    bool pageNumbers = true;
    bool patientHeading = true;
};

// A report laid out on pages in a fixed font; on every page the title, whose report it is, and the page's number.
class ReportPages {
public:
    // `owner` names the patient on every page.
    ReportPages(const Report& report, const QString& owner);
    ReportPages(const QString& text, const QString& title, const QString& owner)
        : ReportPages(Report { text, title, {} }, owner)
    {
    }

    // The report's lines, longer ones broken at the width; a form feed stands alone and begins a page.
    const QStringList& lines() const { return m_lines; }

    // Chooses the paper that is usual where the user lives.
    static void setUsualPaper(QPrinter& printer);
    // Draws all pages; gives their number, 0 when nothing can be drawn.
    int paint(QPrinter& printer) const;
    // Writes a PDF file, with no printer needed; throws Failure when it cannot be written.
    void savePdf(const QString& path) const;

private:
    QList<QStringList> pagesOf(int perPage) const;

    QStringList m_lines;
    QStringList m_heading; // on every page
    int m_lineWidth;
    bool m_pageNumbers;
};

}
