#include "host/report/ReportSheet.h"

#include <QColor>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>

#include <algorithm>

namespace health {

namespace {

constexpr double FixedSize = 10.5; // points
constexpr double SmallestFixed = 4;

// The largest font in which a full line fits the page.
QFont fixedFont(QPrinter& printer, int lineWidth)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(FixedSize);
    const QString fullLine(lineWidth, u'M');
    const double width = printer.pageRect(QPrinter::DevicePixel).width();
    while (font.pointSizeF() > SmallestFixed && QFontMetricsF(font, &printer).horizontalAdvance(fullLine) > width)
        font.setPointSizeF(font.pointSizeF() - 0.25);
    return font;
}

}

ReportSheet::ReportSheet(
    QPainter& painter, QPrinter& printer, int lineWidth, PageFrame::Texts frame, const QList<ReportRow>& rows)
    : m_painter(painter)
    , m_fixed(fixedFont(printer, lineWidth))
    , m_frame(painter, printer, std::move(frame), QFontMetricsF(m_fixed, &printer).lineSpacing())
{
    QStringList captions;
    for (const ReportRow& row : rows)
        captions.append(row.caption);
    m_axis = m_frame.widestOf(m_frame.bodyFont(), captions) + m_frame.rowHeight();
}

int ReportSheet::rowsPerPage() const
{
    return std::max(1, static_cast<int>(m_frame.body().height() / m_frame.rowHeight()));
}

double ReportSheet::rowTop(qsizetype row) const
{
    return m_frame.body().top() + static_cast<double>(row) * m_frame.rowHeight();
}

void ReportSheet::drawPair(const ReportRow& row, const QRectF& place)
{
    const double gap = m_frame.rowHeight() / 2;
    m_painter.setPen(PageFrame::quiet());
    m_frame.drawText(
        { place.left(), place.top(), m_axis - gap, place.height() }, m_frame.bodyFont(), row.caption, Qt::AlignRight);
    m_painter.setPen(Qt::black);
    m_frame.drawText(
        { m_axis, place.top(), place.width() - m_axis, place.height() }, m_frame.bodyFont(), row.text, Qt::AlignLeft);
}

void ReportSheet::drawRow(const ReportRow& row, double top)
{
    const QRectF place(0, top, m_frame.pageWidth(), m_frame.rowHeight());
    if (row.kind == ReportRow::Kind::Pair) {
        drawPair(row, place);
    } else if (row.kind == ReportRow::Kind::Heading) {
        m_frame.drawText(place, m_frame.boldFont(), row.text, Qt::AlignLeft);
        m_frame.drawRule(place.bottom(), 1);
    } else {
        m_frame.drawText(place, m_fixed, row.text, Qt::AlignLeft);
    }
}

void ReportSheet::drawPage(const QList<ReportRow>& rows, const QString& pageNumber)
{
    m_frame.draw(pageNumber);
    for (qsizetype row = 0; row < rows.size(); ++row)
        drawRow(rows[row], rowTop(row));
}

}
