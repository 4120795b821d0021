#include "editors/FeedingAge.h"

#include "api/host.h"
#include "editors/BirthWeight.h"
#include "editors/ExplanationTexts.h"
#include "text/Conversions.h"
#include "text/Letters.h"

namespace health {

namespace {

// Weeks are days, years are months; a month has 28 to 31 days.
struct AgeUnit {
    wchar_t letter;
    TextView name;
    bool inMonths;
    double count; // of days or months
};
constexpr std::array<AgeUnit, 4> AgeUnits { {
    { L'D', L"day", false, 1 },
    { L'W', L"week", false, 7 },
    { L'M', L"month", true, 1 },
    { L'Y', L"year", true, 12 },
} };
constexpr double ShortestMonth = 28;
constexpr double LongestMonth = 31;

const AgeUnit* ageUnit(wchar_t letter)
{
    for (const AgeUnit& unit : AgeUnits) {
        if (unit.letter == letter)
            return &unit;
    }
    return nullptr;
}

TextView numberOf(TextView age) { return age.substr(0, age.size() - 1); }

// The first word after the number: "4 months" becomes M.
wchar_t unitInWords(TextView text)
{
    const std::size_t word = text.find_first_of(L"dwmyDWMY");
    return word == TextView::npos ? L' ' : upperLetter(text[word]);
}

}

bool isValidAge(TextView age) { return !age.empty() && ageUnit(age.back()) && isBetween(numberOf(age), 0, 999); }

Text ageInWords(TextView age)
{
    if (!isValidAge(age))
        return {};
    const Text number = numberText(*numericValue(numberOf(age)));
    return number + L" " + Text(ageUnit(age.back())->name) + (number == L"1" ? L"" : L"s");
}

std::optional<PatientAge> PatientAge::of(const Patient& patient)
{
    const Text words = patient.displayAge();
    if (!words.empty() && isDigit(words.front())) {
        const wchar_t unit = unitInWords(words);
        return ageUnit(unit) ? std::optional(PatientAge(leadingNumber(words), unit)) : std::nullopt;
    }
    const Text years = patient.age();
    return !years.empty() && isDigit(years.front()) ? std::optional(PatientAge(leadingNumber(years), L'Y'))
                                                    : std::nullopt;
}

// The patient's age is cut to whole units, so it is below the next whole one.
bool PatientAge::isBelow(TextView age) const
{
    if (!isValidAge(age))
        return false;
    const AgeUnit& unit = *ageUnit(age.back());
    const AgeUnit& own = *ageUnit(m_unit);
    const double entered = *numericValue(numberOf(age)) * unit.count;
    const double next = (m_number + 1) * own.count;
    if (unit.inMonths == own.inMonths)
        return entered >= next;
    return unit.inMonths ? entered * ShortestMonth >= next : entered >= next * LongestMonth;
}

}
