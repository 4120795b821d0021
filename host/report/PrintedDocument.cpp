#include "host/report/PrintedDocument.h"

#include "api/Failure.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QPageSize>
#include <QPrinter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr double Margin = 22; // millimetres

[[noreturn]] void cannotWrite(const QString& path)
{
    throw Failure(u"The file %1 cannot be written."_s.arg(path).toStdWString());
}

}

void PrintedDocument::setMargins(QPrinter& printer)
{
    printer.setPageMargins(QMarginsF(Margin, Margin, Margin, Margin), QPageLayout::Millimeter);
}

void PrintedDocument::setUsualPaper(QPrinter& printer)
{
    const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    printer.setPageSize(QPageSize(letter ? QPageSize::Letter : QPageSize::A4));
    setMargins(printer);
}

void PrintedDocument::savePdf(const QString& path) const
{
    const QFileInfo file(path);
    if (file.isDir() || (file.exists() && !file.isWritable()))
        cannotWrite(path);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    printer.setDocName(title());
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

QString printedBy(const QString& user)
{
    const QString printed = u"Printed %1"_s.arg(QDate::currentDate().toString(u"MM/dd/yyyy"_s));
    return user.isEmpty() ? printed : printed + u" by %1"_s.arg(user);
}

}
