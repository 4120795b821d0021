#pragma once

#include <QString>
#include <QStringList>

class QPrinter;

namespace health {

// The patient of a document and the user who prints it, as shown.
struct ReportPeople {
    QStringList patient; // the name, then what else identifies the patient, a line each
    QString user;
};

// What the preview shows, prints and saves.
class PrintedDocument {
public:
    virtual ~PrintedDocument() = default;

    virtual QString title() const = 0;
    // The contents as lines, for screen readers.
    virtual QString spokenText() const = 0;
    // Draws all pages and returns their number; 0 on failure. An output file is readable by the user only.
    virtual int paint(QPrinter& printer) const = 0;

    // Writes a PDF file; needs no printer. Throws Failure if it cannot be written.
    void savePdf(const QString& path) const;

    // Sets the paper size that is usual in the user's locale.
    static void setUsualPaper(QPrinter& printer);
    // Sets margins that keep the text away from the paper's edge.
    static void setMargins(QPrinter& printer);
};

// "Printed 11/21/2026 by Sorrel, Ada", of today; without a user's name, only the date.
QString printedBy(const QString& user);

}
