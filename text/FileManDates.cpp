#include "text/FileManDates.h"

#include "text/Conversions.h"
#include "text/Letters.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

// The maximum numbers of digits that are read exactly.
constexpr std::size_t DateDigits = 9;
constexpr std::size_t TimeDigits = 6;

bool allDigits(TextView text) { return std::all_of(text.begin(), text.end(), isDigit); }

// Reads digits exactly, YYYMMDD and HHMMSS as one whole number. Empty for any other form of number.
std::optional<long long> plainFileManNumber(TextView text)
{
    const std::size_t point = std::min(text.find(L'.'), text.size());
    const TextView date = text.substr(0, point);
    const TextView time = text.substr(std::min(point + 1, text.size()));
    if (date.empty() || date.size() > DateDigits || time.size() > TimeDigits || !allDigits(date) || !allDigits(time))
        return std::nullopt;
    long long value = 0;
    for (const wchar_t digit : date)
        value = value * 10 + (digit - L'0');
    for (std::size_t i = 0; i < TimeDigits; ++i)
        value = value * 10 + (i < time.size() ? time[i] - L'0' : 0);
    return value;
}

// The moment of a number YYYYMMDDHHMMSS; empty unless the number has 14 digits, and when its month and day roll over
// beyond the year 9999.
std::optional<Moment> momentOfDigits(long long digits)
{
    if (digits < 10'000'000'000'000 || digits > 99'999'999'999'999)
        return std::nullopt;
    const auto field = [&](long long unit, long long base) { return static_cast<int>(digits / unit % base); };
    const Moment moment = momentOf(field(10'000'000'000, 10'000), field(100'000'000, 100), field(1'000'000, 100),
        field(10'000, 100), field(100, 100), field(1, 100));
    return hasText(moment) ? std::optional(moment) : std::nullopt;
}

std::optional<Moment> momentOfNumber(TextView text)
{
    constexpr long long centuries = 17'000'000'000'000; // 1700, FileMan's year 0, in the digits' scale
    if (const auto digits = plainFileManNumber(text))
        return momentOfDigits(*digits + centuries);
    return momentOfDigits(roundToWhole((leadingNumber(text) + 17'000'000) * 1'000'000));
}

std::optional<Moment> momentOfText(TextView text)
{
    Text spaced(text);
    std::replace(spaced.begin(), spaced.end(), L'@', L' ');
    return parseDate(spaced);
}

}

Text FMDateToDate(TextView text, TimePart timePart)
{
    if (text.empty())
        return {};
    const auto moment = isNumeric(text) ? momentOfNumber(text) : momentOfText(text);
    if (!moment)
        return {};
    return timePart == TimePart::With ? dateTimeText(*moment) : dateText(*moment);
}

Text fmDateToDisplay(TextView text)
{
    const bool timed = text.find_first_of(isNumeric(text) ? L"." : L"@:") != TextView::npos;
    return FMDateToDate(text, timed ? TimePart::With : TimePart::Without);
}

bool isStorable(Moment moment)
{
    const year_month_day date { floor<days>(moment) };
    return date.year() >= year { 1800 } && date.year() <= year { 2699 };
}

Text fmDateOf(Moment moment, TimePart timePart)
{
    const year_month_day date { floor<days>(moment) };
    const int offset = static_cast<int>(date.year()) - 1700;
    if (offset <= 0)
        return {};
    Text text =
        wholeText(offset * 10000LL + static_cast<unsigned>(date.month()) * 100LL + static_cast<unsigned>(date.day()));
    const hh_mm_ss time { moment - dateOf(moment) };
    const long long fraction = time.hours().count() * 10000 + time.minutes().count() * 100 + time.seconds().count();
    if (timePart == TimePart::Without || fraction == 0)
        return text;
    const Text digits = wholeText(1'000'000 + fraction).substr(1);
    return text + L'.' + digits.substr(0, digits.find_last_not_of(L'0') + 1);
}

}
