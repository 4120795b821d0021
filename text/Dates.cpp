#include "text/Dates.h"

#include "text/Letters.h"

#include <algorithm>

namespace health {

using namespace std::chrono;

namespace {

// Reads a date text from left to right. An operation that does not find what it looks for leaves the position
// unchanged.
class Scanner {
public:
    explicit Scanner(TextView text)
        : m_rest(text)
    {
    }

    bool atEnd() const { return m_rest.empty(); }

    bool skipBlanks()
    {
        const std::size_t count = std::min(m_rest.find_first_not_of(L' '), m_rest.size());
        m_rest.remove_prefix(count);
        return count > 0;
    }

    bool take(wchar_t letter)
    {
        if (m_rest.empty() || m_rest.front() != letter)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    // A number of at most `most` digits; sets `digits` to their count.
    std::optional<int> number(std::size_t most, std::size_t& digits)
    {
        int value = 0;
        digits = 0;
        while (digits < m_rest.size() && isDigit(m_rest[digits])) {
            if (digits == most)
                return std::nullopt;
            value = value * 10 + (m_rest[digits++] - L'0');
        }
        if (digits == 0)
            return std::nullopt;
        m_rest.remove_prefix(digits);
        return value;
    }

    std::optional<int> number(std::size_t most)
    {
        std::size_t digits = 0;
        return number(most, digits);
    }

    TextView word()
    {
        std::size_t length = 0;
        while (length < m_rest.size() && isLetter(m_rest[length]))
            ++length;
        const TextView word = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return word;
    }

private:
    static bool isLetter(wchar_t letter)
    {
        return (letter >= L'a' && letter <= L'z') || (letter >= L'A' && letter <= L'Z');
    }

    TextView m_rest;
};

// 1 to 12 for the name of a month or its first three letters; 0 for any other word.
int monthNamed(TextView word)
{
    for (std::size_t i = 0; i < MonthNames.size(); ++i) {
        if (equalIgnoringCase(word, MonthNames[i]) || equalIgnoringCase(word, MonthNames[i].substr(0, 3)))
            return static_cast<int>(i) + 1;
    }
    return 0;
}

std::optional<int> readYear(Scanner& scanner)
{
    std::size_t digits = 0;
    const auto year = scanner.number(4, digits);
    if (!year || digits == 1 || digits == 3)
        return std::nullopt;
    if (digits == 4)
        return year;
    return *year + (*year < 30 ? 2000 : 1900);
}

constexpr int FirstYear = 100;
constexpr int LastYear = 9999;

std::optional<year_month_day> checkedDate(int y, int m, int d)
{
    const year_month_day date { year { y }, month { static_cast<unsigned>(m) }, day { static_cast<unsigned>(d) } };
    if (y < FirstYear || !date.ok())
        return std::nullopt;
    return date;
}

// "m/d/yyyy"
std::optional<year_month_day> readNumericDate(Scanner& scanner)
{
    const auto month = scanner.number(2);
    if (!month || !scanner.take(L'/'))
        return std::nullopt;
    const auto day = scanner.number(2);
    if (!day || !scanner.take(L'/'))
        return std::nullopt;
    const auto year = readYear(scanner);
    return year ? checkedDate(*year, *month, *day) : std::nullopt;
}

// "JAN 2, 2006"; the comma and the blanks around it are optional as long as one of them separates the numbers
std::optional<year_month_day> readNamedDate(Scanner& scanner)
{
    const int month = monthNamed(scanner.word());
    scanner.skipBlanks();
    const auto day = month == 0 ? std::nullopt : scanner.number(2);
    if (!day)
        return std::nullopt;
    bool apart = scanner.skipBlanks();
    apart = scanner.take(L',') || apart;
    scanner.skipBlanks();
    const auto year = apart ? readYear(scanner) : std::nullopt;
    return year ? checkedDate(*year, month, *day) : std::nullopt;
}

// Converts an hour of the 12-hour clock to the 24-hour clock.
std::optional<int> afterNoonMark(int hour, TextView mark)
{
    const bool afternoon = equalIgnoringCase(mark, L"PM");
    if ((!afternoon && !equalIgnoringCase(mark, L"AM")) || hour < 1 || hour > 12)
        return std::nullopt;
    return hour % 12 + (afternoon ? 12 : 0);
}

std::optional<seconds> readTime(Scanner& scanner)
{
    auto hour = scanner.number(2);
    if (!hour || !scanner.take(L':'))
        return std::nullopt;
    const auto minute = scanner.number(2);
    const auto second = scanner.take(L':') ? scanner.number(2) : std::optional<int>(0);
    if (!minute || !second)
        return std::nullopt;
    scanner.skipBlanks();
    if (!scanner.atEnd())
        hour = afterNoonMark(*hour, scanner.word());
    if (!hour || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;
    return hours { *hour } + minutes { *minute } + seconds { *second };
}

// Replaces the letters from `first` up to `end` by the last digits of a number.
void putDigits(Text& text, std::size_t first, std::size_t end, int value)
{
    for (; end > first; value /= 10)
        text[--end] = static_cast<wchar_t>(L'0' + value % 10);
}

void putDate(Text& text, Moment moment)
{
    const year_month_day date { floor<days>(moment) };
    putDigits(text, 0, 2, static_cast<int>(static_cast<unsigned>(date.month())));
    putDigits(text, 3, 5, static_cast<int>(static_cast<unsigned>(date.day())));
    putDigits(text, 6, 10, static_cast<int>(date.year()));
}

}

Moment momentOf(int y, int m, int d, int hour, int minute, int second)
{
    const int months = m - 1;
    const int yearShift = (months >= 0 ? months : months - 11) / 12;
    const auto first =
        year { y + yearShift } / month { static_cast<unsigned>(months - yearShift * 12 + 1) } / day { 1 };
    return local_days { first } + days { d - 1 } + hours { hour } + minutes { minute } + seconds { second };
}

Moment dateOf(Moment moment) { return floor<days>(moment); }

bool hasTime(Moment moment) { return moment != dateOf(moment); }

bool hasText(Moment moment)
{
    const int y { year_month_day { floor<days>(moment) }.year() };
    return y >= FirstYear && y <= LastYear;
}

std::optional<Moment> parseDate(TextView text)
{
    Scanner scanner(text);
    scanner.skipBlanks();
    Scanner named = scanner;
    auto date = readNumericDate(scanner);
    if (!date) {
        date = readNamedDate(named);
        scanner = named;
    }
    if (!date)
        return std::nullopt;
    const Moment midnight = local_days { *date };
    const bool blank = scanner.skipBlanks();
    if (scanner.atEnd())
        return midnight;
    const auto time = blank ? readTime(scanner) : std::nullopt;
    scanner.skipBlanks();
    if (!time || !scanner.atEnd())
        return std::nullopt;
    return midnight + *time;
}

Text dateText(Moment moment)
{
    Text text = L"mm/dd/yyyy";
    putDate(text, moment);
    return text;
}

Text dateTimeText(Moment moment)
{
    const hh_mm_ss time { moment - dateOf(moment) };
    Text text = L"mm/dd/yyyy hh:mm";
    putDate(text, moment);
    putDigits(text, 11, 13, static_cast<int>(time.hours().count()));
    putDigits(text, 14, 16, static_cast<int>(time.minutes().count()));
    return text;
}

Text defaultDateText(Moment moment) { return hasTime(moment) ? dateTimeText(moment) : dateText(moment); }

}
