// What the infant feeding form says about its entry.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmInf.h"

namespace health {

SaveSummary frmInf::summary()
{
    SummaryBuilder builder(m_stored);
    const int item = lstINF.firstChecked();
    builder.addOption(L"", item == -1 ? Text() : lstINF.itemText(item), 4);
    return builder.take();
}

Control* frmInf::fieldOf(TextView refusal) { return fieldNamedIn(refusal, { { L"feeding choice", &lstINF } }); }

}
