// Draws the pages of a report.
#pragma once

#include "host/report/PageFrame.h"
#include "host/report/ReportText.h"

namespace health {

class ReportSheet {
public:
    // The painter draws on the printer, whose pages have room for `lineWidth` letters of the fixed font in a row.
    ReportSheet(
        QPainter& painter, QPrinter& printer, int lineWidth, PageFrame::Texts frame, const QList<ReportRow>& rows);

    int rowsPerPage() const;
    void drawPage(const QList<ReportRow>& rows, const QString& pageNumber);

private:
    double rowTop(qsizetype row) const;
    void drawRow(const ReportRow& row, double top);
    void drawPair(const ReportRow& row, const QRectF& place);

    QPainter& m_painter;
    QFont m_fixed;
    PageFrame m_frame;
    double m_axis = 0; // between captions and values
};

}
