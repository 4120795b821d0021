#include "host/report/PageFrame.h"

#include <QColor>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr double SmallestSize = 4;
constexpr double TitleFactor = 1.55;
constexpr double RowFactor = 1.15; // of the font's line spacing
constexpr double FootRows = 2;
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

PageFrame::PageFrame(QPainter& painter, QPrinter& printer, Texts texts, double leastSpacing)
    : m_painter(painter)
    , m_printer(printer)
    , m_texts(std::move(texts))
    , m_page(QPointF(), printer.pageRect(QPrinter::DevicePixel).size())
    , m_body(sized(QFontDatabase::systemFont(QFontDatabase::GeneralFont), BodySize))
    , m_bold(bold(m_body))
    , m_title(bold(sized(m_body, BodySize * TitleFactor)))
{
    m_rowHeight = std::max(leastSpacing, QFontMetricsF(m_body, &printer).lineSpacing()) * RowFactor;
    const double titles = std::max(widthOf(m_title, m_texts.titles.value(0)), widestOf(m_body, m_texts.titles.mid(1)));
    m_patientBeside = titles + widestOf(m_body, m_texts.patient) + m_rowHeight <= m_page.width();
}

QColor PageFrame::quiet() { return QColor(0x59, 0x59, 0x59); }

QRectF PageFrame::body() const { return m_page.adjusted(0, headingHeight() + m_rowHeight, 0, -FootRows * m_rowHeight); }

void PageFrame::draw(const QString& pageNumber)
{
    drawHead();
    drawFoot(pageNumber);
}

double PageFrame::widthOf(const QFont& font, const QString& text) const
{
    return QFontMetricsF(font, &m_printer).horizontalAdvance(text);
}

double PageFrame::widestOf(const QFont& font, const QStringList& texts) const
{
    double widest = 0;
    for (const QString& text : texts)
        widest = std::max(widest, widthOf(font, text));
    return widest;
}

double PageFrame::titleHeight() const { return QFontMetricsF(m_title, &m_printer).lineSpacing(); }

double PageFrame::headingHeight() const
{
    const double titles = titleHeight() + static_cast<double>(m_texts.titles.size() - 1) * m_rowHeight;
    const double patient = static_cast<double>(m_texts.patient.size()) * m_rowHeight;
    return (m_patientBeside ? std::max(titles, patient) : titles + patient) + m_rowHeight / 3;
}

void PageFrame::drawText(const QRectF& place, const QFont& font, const QString& text, Qt::Alignment alignment)
{
    QFont fitting = font;
    while (fitting.pointSizeF() > SmallestSize && widthOf(fitting, text) > place.width())
        fitting.setPointSizeF(fitting.pointSizeF() - 0.25);
    m_painter.setFont(fitting);
    const int flags = static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextDontClip | Qt::TextSingleLine;
    m_painter.drawText(place, flags, text);
}

void PageFrame::drawRule(double y, double width)
{
    m_painter.save();
    m_painter.setPen(QPen(width > 1 ? QColor(Qt::black) : Hairline, width * m_rowHeight / 20));
    m_painter.drawLine(QPointF(0, y), QPointF(m_page.width(), y));
    m_painter.restore();
}

void PageFrame::drawHead()
{
    double top = titleHeight();
    drawText({ 0, 0, m_page.width(), top }, m_title, m_texts.titles.value(0), Qt::AlignLeft);
    for (const QString& subtitle : m_texts.titles.mid(1)) {
        drawText({ 0, top, m_page.width(), m_rowHeight }, m_body, subtitle, Qt::AlignLeft);
        top += m_rowHeight;
    }
    if (m_patientBeside)
        top = 0;
    bool isName = true;
    for (const QString& line : m_texts.patient) {
        drawText({ 0, top, m_page.width(), m_rowHeight }, std::exchange(isName, false) ? m_bold : m_body, line,
            m_patientBeside ? Qt::AlignRight : Qt::AlignLeft);
        top += m_rowHeight;
    }
    drawRule(headingHeight(), 2);
}

void PageFrame::drawFoot(const QString& pageNumber)
{
    const QRectF place(0, m_page.height() - m_rowHeight, m_page.width(), m_rowHeight);
    drawRule(place.top() - m_rowHeight / 4, 1);
    m_painter.setPen(quiet());
    const QFont small = sized(m_body, BodySize * 0.88);
    drawText(place, small, m_texts.footer, Qt::AlignLeft);
    drawText(place, small, pageNumber, Qt::AlignRight);
    m_painter.setPen(Qt::black);
}

}
