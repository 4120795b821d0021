#include "editors/DueDate.h"

#include "text/DateWords.h"

namespace health {

using namespace std::chrono;

namespace {

constexpr days Pregnancy { 280 };

Text comparedWith(Moment entered, Moment due)
{
    const days later = floor<days>(due) - floor<days>(entered);
    if (later == days { 0 })
        return L"as entered";
    return counted(abs(later).count(), L"day") + (later > days { 0 } ? L" later" : L" earlier") + L" than entered";
}

}

Text weeksAndDays(days duration)
{
    const auto whole = floor<weeks>(duration);
    const days rest = duration - whole;
    const Text text = counted(whole.count(), L"week");
    return rest == days { 0 } ? text : text + L' ' + counted(rest.count(), L"day");
}

Moment dueDate(Moment lastPeriod) { return dateOf(lastPeriod) + Pregnancy; }

Text dueDateWords(Moment lastPeriod, const std::optional<Moment>& entered, Moment now)
{
    const Moment due = dueDate(lastPeriod);
    Text words = L"From LMP: " + dateText(due) + L" (" + counted(Pregnancy.count(), L"day") + L")";
    // After the due date the weeks would say nothing.
    words += due < dateOf(now) ? Text(L", which has passed")
                               : L"; today " + weeksAndDays(floor<days>(now) - floor<days>(lastPeriod));
    return entered ? words + L"; " + comparedWith(*entered, due) : words;
}

}
