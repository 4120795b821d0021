// Names of the kinds of record, for identifiers and file names.
#pragma once

#include "control/RecordTypes.h"

namespace health {

constexpr TextView kindName(RecordTypeNumber type)
{
    constexpr TextView names[] = { L"reproductive-history", L"infant-feeding", L"birth-measurements",
        L"functional-status", L"asthma-status", L"treatment-contract", L"refusal", L"emergency-visit" };
    return names[static_cast<int>(type) - 1];
}

}
