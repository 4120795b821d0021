#include "records/RecordDate.h"

#include "text/Letters.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

constexpr std::size_t DateDigits = 7; // yyymmdd
constexpr std::size_t TimeDigits = 6; // hhmmss, trailing zeros dropped

bool isNumber(TextView text) { return std::all_of(text.begin(), text.end(), isDigit); }

int digits(TextView text, std::size_t start, std::size_t count)
{
    int value = 0;
    for (std::size_t i = start; i < start + count; ++i)
        value = value * 10 + (i < text.size() ? text[i] - L'0' : 0);
    return value;
}

std::optional<RecordDate> dayOf(int year, int month, int day)
{
    using enum RecordDate::Precision;
    const auto precision = month == 0 ? Year : day == 0 ? Month : Day;
    if (month == 0 && day != 0)
        return std::nullopt;
    const int firstMonth = std::max(month, 1);
    const int firstDay = std::max(day, 1);
    const year_month_day date { std::chrono::year { year }, std::chrono::month { static_cast<unsigned>(firstMonth) },
        std::chrono::day { static_cast<unsigned>(firstDay) } };
    if (!date.ok())
        return std::nullopt;
    return RecordDate { momentOf(year, firstMonth, firstDay), precision };
}

std::optional<RecordDate> fileManDate(TextView day, TextView time)
{
    constexpr int firstYear = 1700;
    if (day.size() != DateDigits || time.size() > TimeDigits || !isNumber(time))
        return std::nullopt;
    auto date = dayOf(firstYear + digits(day, 0, 3), digits(day, 3, 2), digits(day, 5, 2));
    if (!date || time.empty() || date->precision != RecordDate::Precision::Day)
        return date;
    const int hour = digits(time, 0, 2);
    const int minute = digits(time, 2, 2);
    if (hour > 24 || minute > 59)
        return std::nullopt;
    return RecordDate { date->start + hours { hour } + minutes { minute }, RecordDate::Precision::Minute };
}

}

Text RecordDate::text() const { return precision == Precision::Minute ? dateTimeText(start) : dayText(); }

Text RecordDate::dayText() const
{
    const Text day = dateText(start);
    if (precision == Precision::Year)
        return day.substr(6);
    return precision == Precision::Month ? day.substr(0, 3) + day.substr(6) : day;
}

std::optional<RecordDate> readRecordDate(TextView text)
{
    const std::size_t point = std::min(text.find(L'.'), text.size());
    const TextView day = text.substr(0, point);
    if (!day.empty() && isNumber(day))
        return fileManDate(day, text.substr(std::min(point + 1, text.size())));
    Text spaced(text);
    std::replace(spaced.begin(), spaced.end(), L'@', L' ');
    const auto moment = parseDate(spaced);
    if (!moment)
        return std::nullopt;
    const bool timed = text.find_first_of(L"@:") != TextView::npos;
    return RecordDate { timed ? floor<minutes>(*moment) : dateOf(*moment),
        timed ? RecordDate::Precision::Minute : RecordDate::Precision::Day };
}

}
