#include "lookups/frmLookupImm.h"

namespace health {

namespace {

// "~" stands where the server means "^".
constexpr TextView WithLotScreen = L"I $D(~AUTTIML(\"C\",Y)),$P($G(~AUTTIMM(Y,0)),U,7)'=1";

}

frmLookupImm::frmLookupImm(modShared& shared)
    : frmLookup(shared)
{
    optAll.setCaption(L"Show &All Active Vaccines");
    optLot.setCaption(L"Show Only active Vaccines with a &Lot Number");
    optAll.setChosen(true);
    optAll.Click =
        trapped(L"opt_Click", [this] { opt_Click(optLot, lookupTable(LookupTableNumber::Immunization).screen); });
    optLot.Click = trapped(L"opt_Click", [this] { opt_Click(optAll, WithLotScreen); });
}

bool frmLookupImm::RunQuery(TextView param)
{
    return frmLookup::RunQuery(LookupTableNumber::Immunization, param, true, L"*");
}

Arrangement frmLookupImm::arrangement() { return column({ row({ optAll, optLot }), frmLookup::arrangement() }); }

// The list follows the choice at once.
void frmLookupImm::opt_Click(OptionButton& other, TextView screen)
{
    other.setChosen(false);
    searchAgain(screen);
}

}
