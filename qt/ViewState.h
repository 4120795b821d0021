// How a panel is arranged, as a host remembers it.
#pragma once

#include "records/RecordFilter.h"

namespace health {

// Never patients' data: neither the words searched for nor the kinds or the year.
struct ViewState {
    RecordOrder order = RecordOrder::AsLoaded;
    bool findIsOpen = false;
    bool detailsAreOpen = true;
    int detailsShare = 40; // of the height, in percent

    bool operator==(const ViewState&) const = default;
};

// "order=newest;find=open;details=closed;share=35"
Text viewStateText(const ViewState& state);

// What a text does not say, or says in a form or size that is not known, stays as in `state`.
ViewState viewStateOf(TextView text, ViewState state = {});

}
