#include "lookups/frmLookupImm.h"

namespace health {

namespace {

// "~" replaces "^", which separates the parameter's pieces.
constexpr TextView WithLotScreen = L"I $D(~AUTTIML(\"C\",Y)),$P($G(~AUTTIMM(Y,0)),U,7)'=1";

}

frmLookupImm::frmLookupImm(modShared& shared)
    : frmLookup(shared, L"frmLookupImm")
{
    opt[0].setCaption(L"Show &All Active Vaccines");
    opt[1].setCaption(L"Show Only active Vaccines with a &Lot Number");
    opt[0].setChosen(true);
    // A choice repeats the search.
    opt.Click = trapped(L"opt_Click", [this](int index) {
        searchAgain(index == 0 ? lookupTable(LookupTableNumber::Immunization).screen : WithLotScreen);
    });
}

bool frmLookupImm::RunQuery(TextView param)
{
    return frmLookup::RunQuery(LookupTableNumber::Immunization, param, true, L"*");
}

Arrangement frmLookupImm::arrangement()
{
    Arrangement whole = frmLookup::arrangement();
    whole.children.insert(whole.children.begin(), { row({ opt[0], opt[1] }), space() });
    return whole;
}

}
