#include "host/report/ReportSheet.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr double BodySize = 10; // points
constexpr double FixedSize = 10.5;
constexpr double SmallestSize = 4;
constexpr double TitleFactor = 1.55;
constexpr double RowFactor = 1.15; // of the font's line spacing
constexpr double FootRows = 2;
const QColor Quiet(0x59, 0x59, 0x59);
const QColor Hairline(0xC8, 0xC8, 0xC8);

QFont sized(QFont font, double points)
{
    font.setPointSizeF(points);
    return font;
}

QFont bold(QFont font)
{
    font.setBold(true);
    return font;
}

}

ReportSheet::ReportSheet(QPainter& painter, QPrinter& printer, int lineWidth, Frame frame, const QList<ReportRow>& rows)
    : m_painter(painter)
    , m_printer(printer)
    , m_frame(std::move(frame))
    , m_page(QPointF(), printer.pageRect(QPrinter::DevicePixel).size())
    , m_fixed(sized(QFontDatabase::systemFont(QFontDatabase::FixedFont), FixedSize))
    , m_body(sized(QFontDatabase::systemFont(QFontDatabase::GeneralFont), BodySize))
    , m_bold(bold(m_body))
    , m_title(bold(sized(m_body, BodySize * TitleFactor)))
{
    const QString fullLine(lineWidth, u'M');
    while (m_fixed.pointSizeF() > SmallestSize && widthOf(m_fixed, fullLine) > m_page.width())
        m_fixed.setPointSizeF(m_fixed.pointSizeF() - 0.25);
    const double spacing =
        std::max(QFontMetricsF(m_fixed, &printer).lineSpacing(), QFontMetricsF(m_body, &printer).lineSpacing());
    m_rowHeight = spacing * RowFactor;
    QStringList captions;
    for (const ReportRow& row : rows)
        captions.append(row.caption);
    m_axis = widestOf(m_body, captions) + m_rowHeight;
    m_patientBeside =
        widthOf(m_title, m_frame.titles.value(0)) + widestOf(m_body, m_frame.patient) + m_rowHeight <= m_page.width();
    m_headHeight = headingHeight() + m_rowHeight;
}

double ReportSheet::widthOf(const QFont& font, const QString& text) const
{
    return QFontMetricsF(font, &m_printer).horizontalAdvance(text);
}

double ReportSheet::widestOf(const QFont& font, const QStringList& texts) const
{
    double widest = 0;
    for (const QString& text : texts)
        widest = std::max(widest, widthOf(font, text));
    return widest;
}

double ReportSheet::titleHeight() const { return QFontMetricsF(m_title, &m_printer).lineSpacing(); }

double ReportSheet::headingHeight() const
{
    const double titles = titleHeight() + static_cast<double>(m_frame.titles.size() - 1) * m_rowHeight;
    const double patient = static_cast<double>(m_frame.patient.size()) * m_rowHeight;
    return (m_patientBeside ? std::max(titles, patient) : titles + patient) + m_rowHeight / 3;
}

int ReportSheet::rowsPerPage() const
{
    return std::max(1, static_cast<int>((m_page.height() - m_headHeight) / m_rowHeight - FootRows));
}

// A text that is too wide becomes smaller: nothing is cut.
void ReportSheet::drawText(const QRectF& place, const QFont& font, const QString& text, Qt::Alignment alignment)
{
    QFont fitting = font;
    while (fitting.pointSizeF() > SmallestSize && widthOf(fitting, text) > place.width())
        fitting.setPointSizeF(fitting.pointSizeF() - 0.25);
    m_painter.setFont(fitting);
    const int flags = static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextDontClip | Qt::TextSingleLine;
    m_painter.drawText(place, flags, text);
}

void ReportSheet::drawRule(double y, double width)
{
    m_painter.save();
    m_painter.setPen(QPen(width > 1 ? QColor(Qt::black) : Hairline, width * m_rowHeight / 20));
    m_painter.drawLine(QPointF(0, y), QPointF(m_page.width(), y));
    m_painter.restore();
}

void ReportSheet::drawHead()
{
    double top = titleHeight();
    drawText({ 0, 0, m_page.width(), top }, m_title, m_frame.titles.value(0), Qt::AlignLeft);
    for (const QString& subtitle : m_frame.titles.mid(1)) {
        drawText({ 0, top, m_page.width(), m_rowHeight }, m_body, subtitle, Qt::AlignLeft);
        top += m_rowHeight;
    }
    if (m_patientBeside)
        top = 0;
    bool isName = true;
    for (const QString& line : m_frame.patient) {
        drawText({ 0, top, m_page.width(), m_rowHeight }, std::exchange(isName, false) ? m_bold : m_body, line,
            m_patientBeside ? Qt::AlignRight : Qt::AlignLeft);
        top += m_rowHeight;
    }
    drawRule(headingHeight(), 2);
}

void ReportSheet::drawFoot(const QString& pageNumber)
{
    const QRectF place(0, m_page.height() - m_rowHeight, m_page.width(), m_rowHeight);
    drawRule(place.top() - m_rowHeight / 4, 1);
    m_painter.setPen(Quiet);
    const QFont small = sized(m_body, BodySize * 0.88);
    drawText(place, small, m_frame.footer, Qt::AlignLeft);
    drawText(place, small, pageNumber, Qt::AlignRight);
    m_painter.setPen(Qt::black);
}

void ReportSheet::drawPair(const ReportRow& row, const QRectF& place)
{
    const double gap = m_rowHeight / 2;
    m_painter.setPen(Quiet);
    drawText({ place.left(), place.top(), m_axis - gap, place.height() }, m_body, row.caption, Qt::AlignRight);
    m_painter.setPen(Qt::black);
    drawText({ m_axis, place.top(), place.width() - m_axis, place.height() }, m_body, row.text, Qt::AlignLeft);
}

void ReportSheet::drawRow(const ReportRow& row, double top)
{
    const QRectF place(0, top, m_page.width(), m_rowHeight);
    if (row.kind == ReportRow::Kind::Pair) {
        drawPair(row, place);
    } else if (row.kind == ReportRow::Kind::Heading) {
        drawText(place, m_bold, row.text, Qt::AlignLeft);
        drawRule(place.bottom(), 1);
    } else {
        drawText(place, m_fixed, row.text, Qt::AlignLeft);
    }
}

void ReportSheet::drawPage(const QList<ReportRow>& rows, const QString& pageNumber)
{
    drawHead();
    for (qsizetype row = 0; row < rows.size(); ++row)
        drawRow(rows[row], rowTop(row));
    drawFoot(pageNumber);
}

}
