#include "host/report/ReportPages.h"

#include "host/desktop/PrivateFile.h"
#include "host/report/ReportSheet.h"

#include <QPainter>
#include <QPrinter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr qsizetype TabWidth = 8;

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

}

ReportPages::ReportPages(const Report& report, const ReportPeople& people)
    : m_titles(report.title)
    , m_user(people.user)
    , m_lineWidth(std::clamp(report.lineWidth, 20, 250))
    , m_pageNumbers(report.pageNumbers)
{
    m_titles.append(report.subtitles);

    QString text = report.text;
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u"\n\f\n"_s, u"\f"_s).replace(u"\f"_s, u"\n\f\n"_s);
    if (text.endsWith(u'\n'))
        text.chop(1);
    for (const QString& line : text.split(u'\n'))
        m_lines.append(brokenLines(withoutTabs(line), m_lineWidth));
    m_rows = reportRows(m_lines);

    if (!report.patientHeading)
        return;
    m_patient = people.patient;
    if (const QString visit = reportedVisit(m_lines); !visit.isEmpty())
        m_patient.append(visit);
}

QList<QList<ReportRow>> ReportPages::pages(int perPage) const
{
    QList<QList<ReportRow>> pages(1);
    for (const ReportRow& row : m_rows) {
        const bool feed = row.kind == ReportRow::Kind::PageBreak;
        // A form feed at the beginning of a page would leave the page empty.
        if ((feed && !pages.last().isEmpty()) || (!feed && pages.last().size() == perPage))
            pages.append(QList<ReportRow>());
        if (!feed)
            pages.last().append(row);
    }
    if (pages.size() > 1 && pages.last().isEmpty())
        pages.removeLast();
    return pages;
}

QString ReportPages::spokenText() const
{
    return (m_patient + m_lines).replaceInStrings(u"\f"_s, QString()).join(u'\n');
}

int ReportPages::paint(QPrinter& printer) const
{
    const QString file = printer.outputFileName();
    QPainter painter;
    if ((!file.isEmpty() && !makePrivate(file)) || !painter.begin(&printer))
        return 0;
    ReportSheet sheet(painter, printer, m_lineWidth, { m_titles, m_patient, printedBy(m_user) }, m_rows);
    const QList<QList<ReportRow>> pages = this->pages(sheet.rowsPerPage());
    for (qsizetype number = 0; number < pages.size(); ++number) {
        if (number > 0)
            printer.newPage();
        sheet.drawPage(pages[number], m_pageNumbers ? u"Page %1 of %2"_s.arg(number + 1).arg(pages.size()) : QString());
    }
    painter.end();
    return static_cast<int>(pages.size());
}

}
