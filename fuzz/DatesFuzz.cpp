// Dates and conversions: what is understood survives the way to its text and back.
#include "api/Utf8.h"
#include "fuzz/FuzzInput.h"
#include "platform/controls/mevZvDate.h"
#include "tests/support/ScriptedHost.h"
#include "text/Conversions.h"
#include "text/Letters.h"

#include <cmath>

namespace health::fuzz {
namespace {

using namespace std::chrono;

const Moment Now = momentOf(2026, 3, 15, 9, 30, 20);

void parsedDate(TextView text)
{
    const auto moment = parseDate(text);
    require(isDate(text) == moment.has_value(), "isDate and parseDate agree", text);
    if (!moment)
        return;
    require(parseDate(dateText(*moment)) == dateOf(*moment), "a date's text is that date", text);
    require(parseDate(dateTimeText(*moment)) == floor<minutes>(*moment), "a time's text is that minute", text);
    for (const TimePart part : { TimePart::Without, TimePart::With }) {
        const Text fileMan = fmDateOf(*moment, part);
        if (fileMan.empty())
            continue;
        require(isNumeric(fileMan), "a FileMan date is a number", fileMan);
        require(FMDateToDate(fileMan, part) == (part == TimePart::With ? dateTimeText(*moment) : dateText(*moment)),
            "a FileMan date is read back", fileMan);
    }
}

void fileManDate(TextView text)
{
    const Text timed = FMDateToDate(text, TimePart::With);
    const Text bare = FMDateToDate(text, TimePart::Without);
    require(timed.empty() == bare.empty(), "a date has both texts or none", text);
    const Text shown = fmDateToDisplay(text);
    require(shown == timed || shown == bare, "what is shown is one of the two", text);
    if (timed.empty())
        return;
    require(parseDate(timed).has_value(), "a FileMan date's text is a date", timed);
    require(parseDate(bare) == dateOf(*parseDate(timed)), "both texts are of the same day", timed);
    require(FMDateToDate(timed, TimePart::With) == timed, "a date's text stands for itself", timed);
}

void enteredDate(TextView text)
{
    mevZvDate date;
    const auto moment = momentEntered(text, Now);
    const Text shown = date.understood(text, Now);
    if (moment) {
        require(parseDate(shown) == floor<minutes>(*moment), "what is shown is what was understood", shown);
        require(date.understood(shown, Now) == shown, "what is shown is understood as it stands", shown);
    } else {
        require(text.find(shown) != TextView::npos, "what is not understood stays", text);
    }
    int entries = 0;
    int refusals = 0;
    date.NewDateEntered = [&] { ++entries; };
    date.EntryRefused = [&] { ++refusals; };
    date.enter(text, Now);
    require(date.value() == shown && entries == (shown.empty() ? 0 : 1) && refusals == 0, "an entry is taken", text);

    mevZvDate timed;
    timed.setRequireTime(true);
    timed.EntryRefused = [&] { ++refusals; };
    timed.enter(text, Now);
    require(
        timed.value().empty() || (timed.moment() && timed.value().size() == 16), "only date and time are kept", text);
    require((refusals == 1) == (timed.value().empty() && !shown.empty()), "what is not kept was refused", text);

    mevZvDate day;
    day.setDateOnly(true);
    day.enter(text, Now);
    require(!moment || day.moment() == dateOf(*moment), "the time is dropped", text);
}

void reportedDate(TextView text)
{
    test::ScriptedHost host;
    modShared shared(host.desktop);
    const Text fileMan = shared.DateToFMDate(text, TimePart::With);
    require(host.boxes().empty() == (text.empty() || isDate(text)), "what is no date is reported", text);
    require(fileMan.empty() || isDate(text), "only a date has a FileMan date", text);
}

void number(TextView text)
{
    const double leading = leadingNumber(text);
    require(!std::isnan(leading), "a number is a number", text);
    if (const auto whole = numericValue(text)) {
        require(*whole == leading, "a numeric text is its leading number", text);
        require(
            *whole == std::strtod(narrow(text).c_str(), nullptr), "a number's value is that of the C library", text);
    }
    const long long rounded = roundToWhole(leading);
    if (std::fabs(leading) < 4503599627370496.0) {
        const double distance = std::fabs(leading - static_cast<double>(rounded));
        require(distance <= 0.5 && (distance < 0.5 || rounded % 2 == 0), "rounding goes to the even neighbour", text);
    }
    const Text digits = wholeText(rounded);
    require(numericValue(digits) == static_cast<double>(rounded), "a whole number is read back", digits);
    require(digits == std::to_wstring(rounded), "a whole number's text is that of the C library", digits);
}

void letters(std::string_view bytes)
{
    const Text text = widen(bytes);
    require(text.size() <= bytes.size() && widen(narrow(text)) == text, "a text survives UTF-8", text);
    for (const WordStart start : { WordStart::AfterBlank, WordStart::AfterBlankOrComma }) {
        const Text proper = properCase(text, start);
        require(proper.size() == text.size(), "proper case changes letters only", text);
        require(properCase(proper, start) == proper, "proper case is final", text);
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
    reportedDate(text);
    number(text);
    return 0;
}
