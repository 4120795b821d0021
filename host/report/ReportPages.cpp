#include "host/report/ReportPages.h"

#include "api/Failure.h"
#include "host/desktop/PrivateFile.h"

#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr int FootLines = 2; // an empty line and the footer
constexpr qsizetype TabWidth = 8;
constexpr double Margin = 18; // millimetres

// The largest fixed font in which a full line fits the page.
QFont fittingFont(QPrinter& printer, int letters, double width)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(10.5);
    const auto lineWidth = [&] { return QFontMetricsF(font, &printer).horizontalAdvance(QString(letters, u'M')); };
    while (font.pointSizeF() > 4 && lineWidth() > width)
        font.setPointSizeF(font.pointSizeF() - 0.25);
    return font;
}

QString withoutTabs(const QString& line)
{
    QString text;
    for (const QChar letter : line) {
        if (letter == u'\t')
            text.resize((text.size() / TabWidth + 1) * TabWidth, u' ');
        else
            text += letter;
    }
    return text;
}

// Where to break a line that is too long: after the last blank within the width, else at the width. A blank directly
// after the width is dropped.
qsizetype breakOf(const QString& line, qsizetype width)
{
    const qsizetype blank = line.lastIndexOf(u' ', width);
    if (blank > width / 2)
        return blank + 1;
    return line[width - 1].isHighSurrogate() ? width - 1 : width;
}

QStringList brokenLines(QString line, qsizetype width)
{
    QStringList lines;
    while (line.size() > width) {
        const qsizetype end = breakOf(line, width);
        lines.append(line.left(std::min(end, width)));
        line.remove(0, end);
    }
    lines.append(line);
    return lines;
}

// A name without blanks and capitals, so that spacing and case do not matter in comparisons.
QString bareName(QString text) { return text.remove(u' ').toCaseFolded(); }

[[noreturn]] void cannotWrite(const QString& path)
{
    throw Failure(u"The file %1 cannot be written."_s.arg(path).toStdWString());
}

}

ReportPages::ReportPages(const Report& report, const ReportPeople& people)
    : m_people(people)
    , m_patientHeading(report.patientHeading)
    , m_lineWidth(std::clamp(report.lineWidth, 20, 250))
    , m_pageNumbers(report.pageNumbers)
{
    m_heading.append(report.title);
    m_heading.append(report.subtitles);

    QString text = report.text;
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u"\n\f\n"_s, u"\f"_s).replace(u"\f"_s, u"\n\f\n"_s);
    if (text.endsWith(u'\n'))
        text.chop(1);
    for (const QString& line : text.split(u'\n'))
        m_lines.append(brokenLines(withoutTabs(line), m_lineWidth));
}

QList<QStringList> ReportPages::pagesOf(int perPage) const
{
    QList<QStringList> pages(1);
    for (const QString& line : m_lines) {
        const bool feed = line == u"\f";
        // A form feed at the beginning of a page would leave the page empty.
        if ((feed && !pages.last().isEmpty()) || (!feed && pages.last().size() == perPage))
            pages.append(QStringList());
        if (!feed)
            pages.last().append(line);
    }
    if (pages.size() > 1 && pages.last().isEmpty())
        pages.removeLast();
    return pages;
}

QList<QStringList> ReportPages::pages(int rows) const
{
    const auto headRows = static_cast<int>(m_heading.size()) + 2; // with the patient and an empty line
    QList<QStringList> pages = pagesOf(std::max(1, rows - headRows));
    for (QStringList& page : pages) {
        QStringList heading = m_heading;
        if (m_patientHeading && !namesPatient(page))
            heading.append(m_people.heading);
        page = heading + QStringList(QString()) + page;
    }
    return pages;
}

bool ReportPages::namesPatient(const QStringList& page) const
{
    const QString name = bareName(m_people.patient);
    return !name.isEmpty()
        && std::any_of(page.begin(), page.end(), [&](const QString& line) { return bareName(line).contains(name); });
}

void ReportPages::setMargins(QPrinter& printer)
{
    printer.setPageMargins(QMarginsF(Margin, Margin, Margin, Margin), QPageLayout::Millimeter);
}

void ReportPages::setUsualPaper(QPrinter& printer)
{
    const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    printer.setPageSize(QPageSize(letter ? QPageSize::Letter : QPageSize::A4));
    setMargins(printer);
}

int ReportPages::paint(QPrinter& printer) const
{
    const QString file = printer.outputFileName();
    QPainter painter;
    if ((!file.isEmpty() && !makePrivate(file)) || !painter.begin(&printer))
        return 0;
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    const QFont font = fittingFont(printer, m_lineWidth, page.width());
    painter.setFont(font);
    const double lineHeight = QFontMetricsF(font, &printer).lineSpacing();
    const int rows = static_cast<int>(page.height() / lineHeight);
    const QList<QStringList> pages = this->pages(rows - FootLines);

    const auto drawLine = [&](qsizetype row, const QString& text, Qt::Alignment alignment = Qt::AlignLeft) {
        const QRectF line(0, static_cast<double>(row) * lineHeight, page.width(), lineHeight);
        painter.drawText(line, static_cast<int>(alignment) | Qt::TextDontClip | Qt::TextSingleLine, text);
    };
    QString printed = u"Printed %1"_s.arg(QDate::currentDate().toString(u"MM/dd/yyyy"_s));
    if (!m_people.user.isEmpty())
        printed += u" by %1"_s.arg(m_people.user);
    for (qsizetype number = 0; number < pages.size(); ++number) {
        if (number > 0)
            printer.newPage();
        for (qsizetype row = 0; row < pages[number].size(); ++row)
            drawLine(row, pages[number][row]);
        drawLine(rows - 1, printed);
        if (m_pageNumbers)
            drawLine(rows - 1, u"Page %1 of %2"_s.arg(number + 1).arg(pages.size()), Qt::AlignRight);
    }
    painter.end();
    return static_cast<int>(pages.size());
}

void ReportPages::savePdf(const QString& path) const
{
    const QFileInfo file(path);
    if (file.isDir() || (file.exists() && !file.isWritable()))
        cannotWrite(path);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    printer.setDocName(m_heading.first());
    setUsualPaper(printer);
    if (paint(printer) == 0)
        cannotWrite(path);
    // QPrinter does not report a full disk; an incomplete file lacks its end mark.
    QFile written(path);
    const bool whole = written.open(QIODevice::ReadOnly) && written.seek(std::max<qint64>(0, written.size() - 64))
        && written.readAll().contains("%%EOF");
    if (whole)
        return;
    written.remove();
    cannotWrite(path);
}

}
