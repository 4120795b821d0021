// How the host shows the server's names and dates.
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace health {

// "O'BRIEN,MARY-ANN J" as "O'Brien, Mary-Ann J".
QString displayName(const QString& name);

// A FileMan date with or without time; invalid for a text that is none. An inexact date (day or month 00) gives
// its first day.
QDateTime dateOfFileMan(const QString& text);
// "mm/dd/yyyy", with " hh:mm" where the text has a time; "mm/yyyy" or "yyyy" for an inexact date.
QString displayDate(const QString& text);

// Whole months of age on a day; empty without a birth date, or before it. Who is born on the last of a month is a month
// older on the last of a shorter one.
std::optional<int> ageInMonths(const QDate& birth, const QDate& today);
// Age on a day: months below two years, days below two months, else years.
QString displayAge(const QDate& birth, const QDate& today);

}
