#pragma once

#include "lookups/frmLookup.h"

namespace health {

// The selection of an education topic: the generic lookup on its table.
class frmLookupEd2 : public frmLookup {
public:
    explicit frmLookupEd2(modShared& shared)
        : frmLookup(shared, L"frmLookupEd2")
    {
    }

    // Searches the topics for a text; for the rest see RunQuery of the generic lookup.
    bool RunQuery(TextView param) { return frmLookup::RunQuery(LookupTableNumber::EducationTopic, param, true, L"*"); }
};

}
