// Names, sexes, dates and ages as the host shows them.
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace health {

// "O'BRIEN,MARY-ANN J" as "O'Brien, Mary-Ann J".
QString displayName(const QString& name);

// "F" as "Female", "M" as "Male"; of any other code, "Sex unknown".
QString displaySex(const QString& code);

// A FileMan date with or without time; invalid for any other text. For an inexact date (day or month 00), the first
// day that it can mean.
QDateTime dateOfFileMan(const QString& text);
// "mm/dd/yyyy", with " hh:mm" where the text has a time; "mm/yyyy" or "yyyy" for an inexact date.
QString displayDate(const QString& text);

// "yyyy-mm-dd" of a FileMan date, "yyyy-mm" or "yyyy" for an inexact one.
QString isoDate(const QString& text);

// Age in whole months; empty without a birth date, or before it. Someone born on the last day of a month is a month
// older on the last day of a shorter month.
std::optional<int> ageInMonths(const QDate& birth, const QDate& today);
// Age in days below two months, in months below two years, else in years.
QString displayAge(const QDate& birth, const QDate& today);

}
