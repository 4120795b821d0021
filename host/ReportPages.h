#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;
class QPrinter;

namespace health {

// A report laid out on pages: lines of at most 80 characters in a fixed font, on every page the title, whose report it
// is, and the page's number.
class ReportPages {
public:
    static constexpr int LineWidth = 80; // characters

    // `owner` names the patient on every page.
    ReportPages(const QString& report, QString title, QString owner);

    // The report's lines, longer ones broken at the width; a form feed stands alone and begins a page.
    const QStringList& lines() const { return m_lines; }

    // Draws all pages; gives their number.
    int paint(QPrinter& printer) const;
    // Writes a PDF file; throws Failure when it cannot be written.
    void savePdf(const QString& path) const;

private:
    QStringList m_lines;
    QString m_title;
    QString m_owner;
};

}
