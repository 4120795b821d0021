#pragma once

#include "lookups/frmLookup.h"
#include "platform/controls/OptionArray.h"

namespace health {

// The lookup of vaccines: the generic one on their table, with the choice between all active ones and those of which
// there is a lot.
class frmLookupImm : public frmLookup {
public:
    explicit frmLookupImm(modShared& shared);

    // Searches the vaccines for a text; for the rest see RunQuery of the generic lookup.
    bool RunQuery(TextView param);

    Arrangement arrangement() override;

    OptionArray<2> opt; // all active ones; those with a lot
};

}
