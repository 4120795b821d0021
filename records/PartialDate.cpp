#include "records/PartialDate.h"

#include "text/Conversions.h"
#include "text/Letters.h"
#include "text/Pieces.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

constexpr int FirstYear = 1700;

// The value of a text of digits alone, with a bounded number of them; -1 for any other text.
int digits(TextView text, std::size_t fewest, std::size_t most)
{
    if (text.size() < fewest || text.size() > most || !std::all_of(text.begin(), text.end(), isDigit))
        return -1;
    int value = 0;
    for (const wchar_t digit : text)
        value = value * 10 + (digit - L'0');
    return value;
}

Text padded(int value, std::size_t width)
{
    const Text text = wholeText(value);
    return Text(width - std::min(width, text.size()), L'0') + text;
}

// Empty for a date that the calendar does not have.
std::optional<PartialDate> dateOfFields(int year, int month, int day)
{
    if (year < 1000 || year > 9999 || month < 0 || month > 12 || day < 0 || (month == 0 && day != 0))
        return std::nullopt;
    const auto valid = [&] {
        return year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day)))
            .ok();
    };
    if (day != 0 && !valid())
        return std::nullopt;
    return PartialDate { .year = year, .month = month, .day = day, .time = {} };
}

std::optional<PartialDate> withTime(std::optional<PartialDate> date, int hour, int minute, int second)
{
    const bool valid = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
    if (date && date->isExact() && valid)
        date->time = momentOf(date->year, date->month, date->day, hour, minute, second);
    return date;
}

std::optional<PartialDate> fileManDate(TextView text)
{
    const TextView number = pieceView(text, L".", 1);
    const TextView time = pieceView(text, L".", 2);
    if (digits(number, 7, 7) == -1 || pieceView(text, L".", 3).size() != 0)
        return std::nullopt;
    const auto date = dateOfFields(digits(number.substr(0, 3), 3, 3) + FirstYear, digits(number.substr(3, 2), 2, 2),
        digits(number.substr(5), 2, 2));
    if (digits(time, 1, 6) == -1)
        return text.size() == number.size() ? date : std::nullopt;
    Text filled(time); // the server drops trailing zeros
    filled.resize(6, L'0');
    const auto field = [&](std::size_t from) { return digits(TextView(filled).substr(from, 2), 2, 2); };
    return withTime(date, field(0), field(2), field(4));
}

std::optional<PartialDate> slashedDate(TextView text)
{
    const std::size_t end = std::min(text.find_first_of(L"@ "), text.size());
    const TextView day = text.substr(0, end);
    if (!pieceView(day, L"/", 4).empty())
        return std::nullopt;
    const auto date = dateOfFields(digits(pieceView(day, L"/", 3), 4, 4), digits(pieceView(day, L"/", 1), 1, 2),
        digits(pieceView(day, L"/", 2), 1, 2));
    if (end == text.size())
        return date;
    const TextView time = text.substr(end + 1);
    const int hour = digits(pieceView(time, L":", 1), 1, 2);
    const int minute = digits(pieceView(time, L":", 2), 2, 2);
    const TextView seconds = pieceView(time, L":", 3);
    const int second = seconds.empty() ? 0 : digits(seconds, 2, 2);
    return hour == -1 || minute == -1 || second == -1 ? std::nullopt : withTime(date, hour, minute, second);
}

}

std::optional<PartialDate> storedDate(TextView text)
{
    return text.find(L'/') == TextView::npos ? fileManDate(text) : slashedDate(text);
}

std::optional<PartialDate> isoDate(TextView text)
{
    const TextView year = text.substr(0, 4);
    const auto field = [&](std::size_t from) { // -1 unless "-" and two digits not 00 are there
        const bool separated = text.size() >= from && text[from - 1] == L'-';
        const int value = separated ? digits(text.substr(from, 2), 2, 2) : -1;
        return value == 0 ? -1 : value;
    };
    switch (text.size()) {
    case 4:
        return dateOfFields(digits(year, 4, 4), 0, 0);
    case 7:
        return dateOfFields(digits(year, 4, 4), field(5), 0);
    case 10:
        return dateOfFields(digits(year, 4, 4), field(5), field(8));
    default:
        return std::nullopt;
    }
}

Text isoText(const PartialDate& date)
{
    Text text = padded(date.year, 4);
    if (date.month != 0)
        text += L'-' + padded(date.month, 2);
    if (date.day != 0)
        text += L'-' + padded(date.day, 2);
    return text;
}

Text clockText(Moment time)
{
    const hh_mm_ss clock(time - dateOf(time));
    const auto field = [](auto value) { return padded(static_cast<int>(value.count()), 2); };
    const Text minutes = field(clock.hours()) + L':' + field(clock.minutes());
    return clock.seconds().count() == 0 ? minutes : minutes + L':' + field(clock.seconds());
}

}
