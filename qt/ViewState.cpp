#include "qt/ViewState.h"

#include "text/Conversions.h"

#include <algorithm>
#include <array>

namespace health {

namespace {

constexpr std::array<TextView, 3> OrderNames { L"loaded", L"newest", L"kind" }; // RecordOrder
constexpr int LeastShare = 10;
constexpr int LargestShare = 90;

TextView openText(bool open) { return open ? L"open" : L"closed"; }

void readOpen(bool& open, TextView value)
{
    if (value == openText(true) || value == openText(false))
        open = value == openText(true);
}

void readPart(ViewState& state, TextView name, TextView value)
{
    if (name == L"find")
        readOpen(state.findIsOpen, value);
    else if (name == L"details")
        readOpen(state.detailsAreOpen, value);
    else if (const auto order = std::find(OrderNames.begin(), OrderNames.end(), value);
             name == L"order" && order != OrderNames.end())
        state.order = static_cast<RecordOrder>(order - OrderNames.begin());
    else if (const auto share = numericValue(value); name == L"share" && share)
        state.detailsShare = std::clamp(static_cast<int>(roundToWhole(*share)), LeastShare, LargestShare);
}

}

Text viewStateText(const ViewState& state)
{
    return L"order=" + Text(OrderNames[static_cast<std::size_t>(state.order)]) + L";find="
        + Text(openText(state.findIsOpen)) + L";details=" + Text(openText(state.detailsAreOpen)) + L";share="
        + wholeText(state.detailsShare);
}

ViewState viewStateOf(TextView text, ViewState state)
{
    while (!text.empty()) {
        const TextView part = text.substr(0, text.find(L';'));
        text.remove_prefix(std::min(text.size(), part.size() + 1));
        if (const std::size_t sign = part.find(L'='); sign != TextView::npos)
            readPart(state, part.substr(0, sign), part.substr(sign + 1));
    }
    return state;
}

}
