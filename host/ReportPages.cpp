#include "host/ReportPages.h"

#include "platform/Failure.h"

#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QPrinter>

namespace health {

namespace {

// Heading, an empty line, the report, an empty line, the foot.
constexpr int FrameLines = 5;

// The largest fixed font with which a line of the full width fits the page.
QFont fittingFont(QPrinter& printer, double width)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(10.5);
    const auto lineWidth = [&] {
        return QFontMetricsF(font, &printer).horizontalAdvance(QString(ReportPages::LineWidth, u'M'));
    };
    while (font.pointSizeF() > 4 && lineWidth() > width)
        font.setPointSizeF(font.pointSizeF() - 0.25);
    return font;
}

}

ReportPages::ReportPages(const QString& report, QString title, QString owner)
    : m_title(std::move(title))
    , m_owner(std::move(owner))
{
    QString text = report;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n').replace(u"\f"_qs, u"\n\f\n"_qs);
    if (text.endsWith(u'\n'))
        text.chop(1);
    for (const QString& line : text.split(u'\n')) {
        m_lines.append(line.left(LineWidth));
        for (qsizetype at = LineWidth; at < line.size(); at += LineWidth)
            m_lines.append(line.mid(at, LineWidth));
    }
}

int ReportPages::paint(QPrinter& printer) const
{
    QPainter painter;
    if (!painter.begin(&printer))
        throw Failure(L"The report cannot be printed.");
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    const QFont font = fittingFont(printer, page.width());
    painter.setFont(font);
    const double lineHeight = QFontMetricsF(font, &printer).lineSpacing();
    const int perPage = std::max(1, static_cast<int>(page.height() / lineHeight) - FrameLines);

    QList<QStringList> pages(1);
    for (const QString& line : m_lines) {
        if (line == u"\f" || pages.last().size() == perPage)
            pages.append(QStringList());
        if (line != u"\f")
            pages.last().append(line);
    }
    const QString date = QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
    for (qsizetype number = 0; number < pages.size(); ++number) {
        if (number > 0)
            printer.newPage();
        const auto drawLine = [&](int row, const QString& text, Qt::Alignment alignment) {
            const QRectF line(0, row * lineHeight, page.width(), lineHeight);
            painter.drawText(line, static_cast<int>(alignment) | Qt::TextDontClip | Qt::TextSingleLine, text);
        };
        drawLine(0, m_title, Qt::AlignLeft);
        drawLine(0, date, Qt::AlignRight);
        drawLine(1, m_owner, Qt::AlignLeft);
        for (qsizetype line = 0; line < pages[number].size(); ++line)
            drawLine(static_cast<int>(line) + 3, pages[number][line], Qt::AlignLeft);
        drawLine(perPage + 4, QStringLiteral("Page %1 of %2").arg(number + 1).arg(pages.size()), Qt::AlignRight);
    }
    painter.end();
    return static_cast<int>(pages.size());
}

void ReportPages::savePdf(const QString& path) const
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    printer.setDocName(m_title);
    const bool writable = QFileInfo(path).absoluteDir().exists();
    if (!writable)
        throw Failure(QStringLiteral("The file %1 cannot be written.").arg(path).toStdWString());
    try {
        paint(printer);
    } catch (const Failure&) {
        throw Failure(QStringLiteral("The file %1 cannot be written.").arg(path).toStdWString());
    }
}

}
