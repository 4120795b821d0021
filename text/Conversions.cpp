#include "text/Conversions.h"

#include "text/Letters.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace health {

namespace {

bool isSign(wchar_t letter) { return letter == L'+' || letter == L'-'; }

std::size_t digitsFrom(TextView text, std::size_t start)
{
    std::size_t end = start;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    return end - start;
}

std::size_t exponentFrom(TextView text, std::size_t start)
{
    if (start >= text.size() || (text[start] != L'e' && text[start] != L'E'))
        return 0;
    const std::size_t sign = start + 1 < text.size() && isSign(text[start + 1]) ? 1 : 0;
    const std::size_t digits = digitsFrom(text, start + 1 + sign);
    return digits == 0 ? 0 : 1 + sign + digits;
}

// Length of the number at the beginning of the text; 0 if the text begins with no number.
std::size_t numberLength(TextView text)
{
    std::size_t at = !text.empty() && isSign(text[0]) ? 1 : 0;
    std::size_t digits = digitsFrom(text, at);
    at += digits;
    if (at < text.size() && text[at] == L'.') {
        const std::size_t fraction = digitsFrom(text, at + 1);
        digits += fraction;
        at += 1 + fraction;
    }
    return digits == 0 ? 0 : at + exponentFrom(text, at);
}

// The exponent of a number without its sign, or 0; exponents too long for an integer are clamped.
long long exponentOf(std::string_view number)
{
    constexpr long long bound = 1'000'000'000'000'000'000;
    const std::size_t mark = number.find_first_of("eE");
    if (mark == std::string_view::npos)
        return 0;
    number.remove_prefix(mark + 1);
    const bool negative = number.front() == '-';
    if (negative || number.front() == '+')
        number.remove_prefix(1);
    long long exponent = bound;
    if (std::from_chars(number.data(), number.data() + number.size(), exponent).ec != std::errc() || exponent > bound)
        exponent = bound;
    return negative ? -exponent : exponent;
}

// Distinguishes underflow from overflow: true if a number, without its sign, is too small for a double.
bool isTiny(std::string_view number)
{
    const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), mark);
    const std::size_t firstDigit = number.find_first_of("123456789");
    return static_cast<long long>(point) - static_cast<long long>(firstDigit) + exponentOf(number) < 0;
}

double value(TextView number)
{
    const bool negative = number.front() == L'-';
    if (isSign(number.front()))
        number.remove_prefix(1);
    std::string digits(number.begin(), number.end());
    double result = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), result);
    if (error == std::errc::result_out_of_range)
        result = isTiny(digits) ? 0 : std::numeric_limits<double>::infinity();
    return negative ? -result : result;
}

TextView withoutLeadingBlanks(TextView text)
{
    const std::size_t start = text.find_first_not_of(L' ');
    return start == TextView::npos ? TextView() : text.substr(start);
}

// The number in a text that has nothing else but blanks; empty for every other text.
TextView soleNumber(TextView text)
{
    text = withoutLeadingBlanks(text);
    const std::size_t length = numberLength(text);
    return text.find_first_not_of(L' ', length) == TextView::npos ? text.substr(0, length) : TextView();
}

}

std::optional<double> numericValue(TextView text)
{
    const TextView number = soleNumber(text);
    return number.empty() ? std::nullopt : std::optional(value(number));
}

bool isNumeric(TextView text) { return !soleNumber(text).empty(); }

double leadingNumber(TextView text)
{
    text = withoutLeadingBlanks(text);
    const std::size_t length = numberLength(text);
    return length == 0 ? 0 : value(text.substr(0, length));
}

long long roundToWhole(double value)
{
    // 2^63 is exact in a double; the largest whole number itself is not.
    constexpr double bound = 9223372036854775808.0;
    if (value >= bound)
        return std::numeric_limits<long long>::max();
    if (value <= -bound)
        return std::numeric_limits<long long>::min();
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2) != 0);
    return static_cast<long long>(up ? below + 1 : below);
}

Text wholeText(long long value)
{
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return Text(digits, end);
}

}
