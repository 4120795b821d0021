#include "host/DisplayText.h"

#include "platform/Failure.h"

#include <QStringList>

namespace health {

QString displayName(const QString& name)
{
    QString shown;
    bool wordBegins = true;
    for (const QChar letter : name) {
        shown += wordBegins ? letter.toUpper() : letter.toLower();
        if (letter == u',')
            shown += u' ';
        wordBegins = !letter.isLetterOrNumber();
    }
    return shown;
}

QDateTime dateOfFileMan(const QString& text)
{
    const QStringList parts = text.split(u'.');
    const int number = parts[0].toInt();
    const QDate date(number / 10000 + 1700, number / 100 % 100, number % 100);
    const QString digits = parts.value(1).leftJustified(6, u'0');
    const QTime time(digits.left(2).toInt(), digits.mid(2, 2).toInt(), digits.mid(4, 2).toInt());
    return QDateTime(date, time);
}

QString displayDate(const QString& text)
{
    const QDateTime date = dateOfFileMan(text);
    if (!date.isValid())
        return {};
    return date.toString(text.contains(u'.') ? QStringLiteral("MM/dd/yyyy hh:mm") : QStringLiteral("MM/dd/yyyy"));
}

QString displayAge(const QDate& birth, const QDate& today)
{
    if (!birth.isValid() || birth > today)
        return {};
    const auto count = [](int number, const char* unit) {
        return QStringLiteral("%1 %2%3").arg(number).arg(
            QLatin1String(unit), number == 1 ? QString() : QStringLiteral("s"));
    };
    int months = (today.year() - birth.year()) * 12 + today.month() - birth.month();
    if (birth.addMonths(months) > today)
        --months;
    if (months < 2)
        return count(static_cast<int>(birth.daysTo(today)), "day");
    return months < 24 ? count(months, "month") : count(months / 12, "year");
}

QList<QStringList> linesOf(const Text& reply)
{
    const QString text = QString::fromStdWString(reply);
    if (text.startsWith(u'-'))
        throw Failure(text.section(u'^', 1, 1).toStdWString());
    QList<QStringList> lines;
    for (const QString& line : text.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
        lines.append(line.split(u'^'));
    return lines;
}

}
