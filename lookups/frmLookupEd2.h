#pragma once

#include "lookups/frmLookup.h"

namespace health {

// Selects an education topic. Intended: never opened, because no refusal type uses its table.
class frmLookupEd2 : public frmLookup {
public:
    explicit frmLookupEd2(modShared& shared)
        : frmLookup(shared, L"frmLookupEd2")
    {
    }

    // Searches the topics for a text; otherwise like RunQuery of the base class.
    bool RunQuery(TextView param) { return frmLookup::RunQuery(LookupTableNumber::EducationTopic, param, true, L"*"); }
};

}
