// Dates, numbers and letters: whatever is accepted survives the conversion to text and back.
#include "api/Utf8.h"
#include "fuzz/FuzzInput.h"
#include "platform/controls/mevZvDate.h"
#include "text/Conversions.h"
#include "text/FileManDates.h"

#include <cmath>

namespace health::fuzz {
namespace {

using namespace std::chrono;

const Moment Now = momentOf(2026, 3, 15, 9, 30, 20);

void parsedDate(TextView text)
{
    const auto moment = parseDate(text);
    if (!moment)
        return;
    require(parseDate(dateText(*moment)) == dateOf(*moment), "a date's text is that date", text);
    require(parseDate(dateTimeText(*moment)) == floor<minutes>(*moment), "a time's text is that minute", text);
    const Text fileMan = fmDateOf(*moment, TimePart::With);
    require(fileMan.empty() || FMDateToDate(fileMan, TimePart::With) == dateTimeText(*moment),
        "a FileMan date is read back", fileMan);
}

void fileManDate(TextView text)
{
    const Text timed = FMDateToDate(text, TimePart::With);
    const Text bare = FMDateToDate(text, TimePart::Without);
    const Text shown = fmDateToDisplay(text);
    require(shown == timed || shown == bare, "the display text is one of the two forms", text);
    require(timed.substr(0, bare.size()) == bare && timed.empty() == bare.empty(), "both name the same day", text);
    require(FMDateToDate(timed, TimePart::With) == timed, "a date's text denotes itself", timed);
}

void enteredDate(TextView text)
{
    mevZvDate date;
    const auto moment = momentEntered(text, Now);
    const Text shown = date.understood(text, Now);
    require(date.understood(shown, Now) == shown || !moment, "an understood entry is final", shown);
    require(moment ? parseDate(shown) == floor<minutes>(*moment) : text.find(shown) != TextView::npos,
        "an entry shows its date, or itself", shown);
    date.enter(text, Now);
    require(date.value() == shown, "an entry is accepted", text);

    bool refused = false;
    mevZvDate timed;
    timed.setRequireTime(true);
    timed.EntryRefused = [&] { refused = true; };
    timed.enter(text, Now);
    require(timed.value().empty() || timed.value().size() == 16, "only a date with its time is kept", text);
    require(refused == (timed.value().empty() && !shown.empty()), "any other entry is refused", text);

    mevZvDate day;
    day.setDateOnly(true);
    day.enter(text, Now);
    require(!moment || day.moment() == dateOf(*moment), "the time is dropped", text);
}

// What the user has typed of a date so far is never called hopeless.
void begunDate(TextView text)
{
    constexpr std::size_t longest = 24; // each beginning is tried with many endings
    if (text.size() > longest || !momentEntered(text, Now))
        return;
    for (std::size_t size = 0; size < text.size(); ++size)
        require(isDateBegun(text.substr(0, size), Now), "the beginning of a date is one", text);
}

void nearestWeekday(TextView text)
{
    const DateRange future { Now, momentOf(2027, 1, 1) };
    const auto open = momentEntered(text, Now);
    const auto chosen = momentEntered(text, Now, future);
    require(open.has_value() == chosen.has_value(), "a range does not decide what is a date", text);
    require(open == chosen || (*chosen - *open == weeks { 1 } && future.contains(*chosen) && !future.contains(*open)),
        "a range moves a weekday by a week, into the range", text);
}

void number(TextView text)
{
    const double leading = leadingNumber(text);
    require(!std::isnan(leading), "every text has a leading number", text);
    if (const auto whole = numericValue(text))
        require(*whole == leading && *whole == std::strtod(narrow(text).c_str(), nullptr),
            "a number's value is that of the C library", text);
    const long long rounded = roundToWhole(leading);
    if (std::fabs(leading) < 4503599627370496.0)
        require(rounded == std::llrint(leading), "halves are rounded to the even neighbour", text);
    require(wholeText(rounded) == std::to_wstring(rounded), "its text is that of the C library", text);
}

void letters(std::string_view bytes)
{
    const Text text = widen(bytes);
    require(text.size() <= bytes.size() && widen(narrow(text)) == text, "a text survives UTF-8", text);
    for (const WordStart start : { WordStart::AfterBlank, WordStart::AfterBlankOrComma }) {
        const Text proper = properCase(text, start);
        require(proper.size() == text.size() && properCase(proper, start) == proper, "proper case is final", text);
        require(upperCase(upperCase(proper)) == upperCase(proper), "upper case is final", text);
    }
}

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace health::fuzz;
    letters({ reinterpret_cast<const char*>(data), size });
    const health::Text text = Sections(data, size).next();
    parsedDate(text);
    fileManDate(text);
    enteredDate(text);
    begunDate(text);
    nearestWeekday(text);
    number(text);
    return 0;
}
