#include "editors/BirthWeight.h"

#include "editors/ExplanationTexts.h"
#include "text/Conversions.h"

#include <cmath>
#include <utility>

namespace health {

namespace {

constexpr double GramsPerPound = 453.592;
constexpr double GramsPerOunce = 28.35;
constexpr long long OuncesPerPound = 16;

// "7 lbs", "1 lb". Intended: every text but "1" is plural, even an empty one.
Text withUnit(TextView amount, TextView unit)
{
    return Text(amount) + L" " + Text(unit) + (amount == L"1" ? L"" : L"s");
}

// Halves go up, as in the server's decimal arithmetic; a binary product may lie a little below its half.
long long rounded(double value)
{
    constexpr double slip = 1e-9;
    return static_cast<long long>(std::floor(value + 0.5 + slip));
}

BirthWeight weightOf(long long grams, TextView pounds, TextView ounces)
{
    return { Text(pounds), Text(ounces), numberText(static_cast<double>(grams) / 1000), wholeText(grams) };
}

std::optional<BirthWeight> fromPounds(TextView poundsText, TextView ouncesText)
{
    const auto pounds = numericValue(poundsText);
    const auto ounces = numericValue(ouncesText);
    const auto fits = [](const auto& number) { return number && *number >= 0 && *number <= 99; };
    if (!fits(pounds) || !fits(ounces))
        return {};
    return weightOf(
        rounded(*pounds * GramsPerPound + *ounces * GramsPerOunce), numberText(*pounds), numberText(*ounces));
}

std::optional<BirthWeight> fromMetric(TextView number, std::size_t unit)
{
    if (!isBetween(number, 0, unit == Kilograms ? 100 : 100'000))
        return {};
    const long long grams = rounded(*numericValue(number) * (unit == Kilograms ? 1000 : 1));
    const long long ounces = rounded(static_cast<double>(grams) / GramsPerOunce);
    return weightOf(grams, wholeText(ounces / OuncesPerPound), wholeText(ounces % OuncesPerPound));
}

// Pounds and ounces are separated by the first blank or, without a blank, by the first hyphen.
std::size_t separatorIn(TextView entry)
{
    const std::size_t blank = entry.find(L' ');
    return blank == TextView::npos ? entry.find(L'-') : blank;
}

TextView withoutLetter(TextView entry, std::size_t unit)
{
    return entry.substr(0, entry.size() - WeightUnits[unit].letter.size());
}

Explanation unfinished(TextView what) { return besideField(Text(what)); }
Explanation refused(TextView why) { return besideField(Text(why), Tone::Error); }

Explanation poundsFault(TextView entry, std::size_t separator)
{
    const TextView ounces = separator == TextView::npos ? TextView() : entry.substr(separator + 1);
    if (!isNumeric(entry.substr(0, separator)))
        return refused(L"not a weight, see the examples");
    if (!isBetween(entry.substr(0, separator), WeightUnits[PoundsOunces].low, WeightUnits[PoundsOunces].high))
        return refused(L"more than 1 lb and less than 25 lbs");
    if (ounces.find_first_not_of(L' ') == TextView::npos)
        return unfinished(L"lbs, then a blank and the ounces");
    if (!isNumeric(ounces))
        return refused(L"not a weight, see the examples");
    return isBetween(ounces, -1, 17) ? Explanation {} : refused(L"ounces from 0 to 16");
}

}

bool isBetween(TextView text, double low, double high)
{
    const auto value = numericValue(text);
    return value && *value > low && *value < high;
}

Text BirthWeight::inPounds() const
{
    return withUnit(pounds, L"lb") + (ounces.empty() ? L"" : L" " + withUnit(ounces, L"oz"));
}

Text BirthWeight::text() const
{
    if (pounds.empty() && ounces.empty() && kilograms.empty())
        return {};
    return inPounds() + (kilograms.empty() ? L"" : L" (" + withUnit(kilograms, L"kg") + L")");
}

std::size_t unitOf(TextView entry)
{
    for (const std::size_t unit : { Kilograms, Grams }) {
        if (entry.ends_with(WeightUnits[unit].letter))
            return unit;
    }
    return PoundsOunces;
}

std::optional<BirthWeight> birthWeight(TextView entry)
{
    if (const std::size_t separator = separatorIn(entry); separator != TextView::npos)
        return fromPounds(entry.substr(0, separator), entry.substr(separator + 1));
    const std::size_t unit = unitOf(entry);
    if (unit == PoundsOunces)
        return {};
    return fromMetric(withoutLetter(entry, unit), unit);
}

Explanation weightFault(TextView entry)
{
    const std::size_t separator = separatorIn(entry);
    const std::size_t unit = unitOf(entry);
    if (separator != TextView::npos || unit == PoundsOunces)
        return poundsFault(entry, separator);
    const TextView number = withoutLetter(entry, unit);
    if (isBetween(number, WeightUnits[unit].low, WeightUnits[unit].high))
        return {};
    if (!isNumeric(number))
        return refused(L"not a weight, see the examples");
    return refused(
        unit == Kilograms ? L"more than 0.907 kg and less than 10 kg" : L"more than 907 g and less than 10,000 g");
}

Text otherUnits(const BirthWeight& weight, std::size_t unit, bool hasLetter)
{
    const std::array<Text, 3> texts { weight.inPounds(), weight.kilograms + L" kg",
        groupedText(rounded(leadingNumber(weight.grams))) + L" g" };
    Text others = hasLetter || unit == PoundsOunces ? L"= " : texts[unit] + L" = ";
    bool isFirst = true;
    for (std::size_t other = 0; other < texts.size(); ++other) {
        if (other != unit)
            others += (std::exchange(isFirst, false) ? L"" : L" \u00B7 ") + texts[other];
    }
    return others;
}

}
