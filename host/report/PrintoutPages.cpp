#include "host/report/PrintoutPages.h"

#include "host/desktop/PrivateFile.h"
#include "host/report/PageFrame.h"
#include "toolkit/QtText.h"

#include <QPainter>
#include <QPrinter>

#include <utility>

using namespace Qt::StringLiterals;

namespace health {

PrintoutPages::PrintoutPages(Printout& printout, ReportPeople people)
    : m_printout(printout)
    , m_people(std::move(people))
{
}

QString PrintoutPages::title() const { return toQString(m_printout.title()); }

QString PrintoutPages::spokenText() const
{
    QStringList lines = m_people.patient;
    for (const Text& remark : m_printout.remarks())
        lines.append(toQString(remark));
    lines.append(toQString(m_printout.plainText()));
    return lines.join(u'\n');
}

int PrintoutPages::paint(QPrinter& printer) const
{
    const QString file = printer.outputFileName();
    QPainter painter;
    if ((!file.isEmpty() && !makePrivate(file)) || !painter.begin(&printer))
        return 0;
    QStringList titles(title());
    for (const Text& remark : m_printout.remarks())
        titles.append(toQString(remark));
    PageFrame frame(painter, printer, { titles, m_people.patient, printedBy(m_people.user) });
    const QRectF body = frame.body();
    const double dot = static_cast<double>(printer.resolution()) / PrintoutDotsPerInch;
    const int pages = m_printout.layOut(static_cast<int>(body.width() / dot), static_cast<int>(body.height() / dot));
    for (int page = 0; page < pages; ++page) {
        if (page > 0)
            printer.newPage();
        frame.draw(u"Page %1 of %2"_s.arg(page + 1).arg(pages));
        painter.save();
        painter.translate(body.topLeft());
        painter.scale(dot, dot);
        m_printout.draw(painter, page);
        painter.restore();
    }
    painter.end();
    return pages;
}

}
