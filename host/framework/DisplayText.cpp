#include "host/framework/DisplayText.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

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
    const QDate date(number / 10000 + 1700, std::max(1, number / 100 % 100), std::max(1, number % 100));
    if (parts[0].size() != 7 || !date.isValid())
        return {};
    const QString digits = parts.value(1).leftJustified(6, u'0');
    const int hour = digits.left(2).toInt();
    // Midnight is hour 24 of the day that ends then.
    return QDateTime(date.addDays(hour / 24), QTime(hour % 24, digits.mid(2, 2).toInt(), digits.mid(4, 2).toInt()));
}

QString displayDate(const QString& text)
{
    if (!dateOfFileMan(text).isValid())
        return {};
    const QString date = text.section(u'.', 0, 0);
    const QString time = text.section(u'.', 1);
    const QString year = QString::number(date.left(3).toInt() + 1700);
    const QString month = date.mid(3, 2);
    const QString day = date.mid(5, 2);
    if (month == u"00")
        return year;
    if (day == u"00")
        return month + u'/' + year;
    const QString shown = month + u'/' + day + u'/' + year;
    const QString digits = time.leftJustified(4, u'0');
    return time.isEmpty() ? shown : shown + u' ' + digits.left(2) + u':' + digits.mid(2, 2);
}

QString isoDate(const QString& text)
{
    const QDate first = dateOfFileMan(text).date();
    if (!first.isValid())
        return {};
    const QString iso = first.toString(Qt::ISODate);
    const qsizetype known = text.mid(3, 2) == u"00" ? 4 : text.mid(5, 2) == u"00" ? 7 : 10;
    return iso.left(known);
}

std::optional<int> ageInMonths(const QDate& birth, const QDate& today)
{
    if (!birth.isValid() || birth > today)
        return {};
    const int months = (today.year() - birth.year()) * 12 + today.month() - birth.month();
    return birth.addMonths(months) > today ? months - 1 : months;
}

QString displaySex(const QString& code)
{
    return code == u"F" ? u"Female"_s : code == u"M" ? u"Male"_s : u"Sex unknown"_s;
}

QString displayAge(const QDate& birth, const QDate& today)
{
    const auto age = ageInMonths(birth, today);
    if (!age)
        return {};
    const auto count = [](int number, const char* unit) {
        return u"%1 %2%3"_s.arg(number).arg(QLatin1String(unit), number == 1 ? QString() : u"s"_s);
    };
    if (*age < 2)
        return count(static_cast<int>(birth.daysTo(today)), "day");
    return *age < 24 ? count(*age, "month") : count(*age / 12, "year");
}

}
