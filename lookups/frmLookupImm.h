#pragma once

#include "lookups/frmLookup.h"
#include "platform/controls/OptionArray.h"

namespace health {

// Selects a vaccine, either among all active ones or among those with a lot.
class frmLookupImm : public frmLookup {
public:
    explicit frmLookupImm(modShared& shared);

    // Searches the vaccines for a text; otherwise like RunQuery of the base class.
    bool RunQuery(TextView param);

    Arrangement arrangement() override;

    OptionArray<2> opt; // all active ones; those with a lot
};

}
