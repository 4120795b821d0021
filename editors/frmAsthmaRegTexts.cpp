// What the asthma registry's form says about its entries.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmAsthmaReg.h"

namespace health {

namespace {

constexpr std::size_t LongestRegistryComment = 4000; // characters
constexpr std::array<TextView, 3> RegistryDates { L"Last Asthma Visit", L"Calculated Date Due", L"Next Appointment" };
constexpr PieceNumber FirstDatePlace = 3;
constexpr PieceNumber ManagerPlace = 6;
constexpr TextView ActiveStatus = L"Active";

}

Explanation frmAsthmaReg::explainEntry(const Control& field)
{
    if (&field == &txtComments)
        return lengthIfClose(txtComments.text(), LongestRegistryComment);
    if (&field != &txtPrv)
        return {};
    const Text stored = storedManager();
    if (txtPrv.tag().empty() && !stored.empty() && txtPrv.text() == stored)
        return besideField(L"unchanged");
    if (txtPrv.text().empty() && !stored.empty())
        return besideField(L"the server keeps " + stored, Tone::Caution);
    return explainLookup(txtPrv);
}

Text frmAsthmaReg::storedManager() const { return spacedName(m_stored.display(ManagerPlace)); }

// --- What will be saved ---

SaveSummary frmAsthmaReg::summary()
{
    SummaryBuilder builder(m_stored);
    builder.add(L"Status", ActiveStatus, lblStatus.caption() != ActiveStatus);
    if (lblStatus.caption() != ActiveStatus)
        builder.say(L"Saving makes the patient active in the registry.");
    for (std::size_t i = 0; i < dat.size(); ++i)
        builder.addDate(RegistryDates[i], dateEntered(dat[i]), FirstDatePlace + static_cast<PieceNumber>(i));
    addManager(builder);
    builder.addText(L"Comments", txtComments.text(), m_storedNote);
    if (txtComments.text() != m_storedNote && txtComments.text() == replaced(m_storedNote, LineBreak, L" "))
        builder.say(L"The comment is sent as one line: its line breaks have become blanks.");
    return builder.take();
}

void frmAsthmaReg::addManager(SummaryBuilder& builder) const
{
    const Text picked = spacedName(pickedName(txtPrv));
    const Text stored = storedManager();
    if (!picked.empty()) {
        builder.addEntry(L"Case Manager", picked, pickedId(txtPrv), m_stored.code(ManagerPlace));
        return;
    }
    builder.add(L"Case Manager", {}, false); // the server keeps the stored one
    if (stored.empty())
        return;
    if (txtPrv.text().empty())
        builder.say(L"A case manager cannot be removed here: it is sent empty, and the server keeps " + stored + L".");
    else if (txtPrv.text() == stored)
        builder.say(
            L"The case manager was not looked up again: it is sent empty, and the server keeps " + stored + L".");
}

// --- Refusals of the server ---

Control* frmAsthmaReg::fieldOf(TextView refusal)
{
    // Of several faulty dates, the server names the last.
    for (std::size_t i = dat.size(); i-- > 0;) {
        if (!dat[i].isEmpty() && refusal.starts_with(dat[i].value() + L" is "))
            return &dat[i];
    }
    return fieldNamedIn(
        refusal, { { L"case manager", &txtPrv }, { L"comment", &txtComments }, { L"call is longer", &txtComments } });
}

}
