// Draws the parts of a report's page.
#pragma once

#include "host/report/ReportText.h"

#include <QFont>
#include <QRectF>

class QPainter;
class QPrinter;

namespace health {

class ReportSheet {
public:
    // What each page shows above and below its rows.
    struct Frame {
        QStringList titles; // the first is the title
        QStringList patient;
        QString footer;
    };

    // The painter draws on the printer, whose pages have room for `lineWidth` letters of the fixed font in a row.
    ReportSheet(QPainter& painter, QPrinter& printer, int lineWidth, Frame frame, const QList<ReportRow>& rows);

    int rowsPerPage() const;
    void drawPage(const QList<ReportRow>& rows, const QString& pageNumber);

private:
    double rowTop(qsizetype row) const { return m_headHeight + static_cast<double>(row) * m_rowHeight; }
    double widthOf(const QFont& font, const QString& text) const;
    double widestOf(const QFont& font, const QStringList& texts) const;
    double titleHeight() const;
    double headingHeight() const;
    void drawText(const QRectF& place, const QFont& font, const QString& text, Qt::Alignment alignment);
    void drawRule(double y, double width);
    void drawHead();
    void drawFoot(const QString& pageNumber);
    void drawRow(const ReportRow& row, double top);
    void drawPair(const ReportRow& row, const QRectF& place);

    QPainter& m_painter;
    QPrinter& m_printer;
    Frame m_frame;
    QRectF m_page;
    QFont m_fixed; // the largest in which a full line fits the page
    QFont m_body;
    QFont m_bold;
    QFont m_title;
    double m_rowHeight = 0;
    double m_headHeight = 0;
    double m_axis = 0; // between captions and values
    bool m_patientBeside = true; // the title and the patient fit side by side
};

}
