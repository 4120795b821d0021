// What the emergency room form says about its entries.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmER.h"
#include "text/Letters.h"

#include <utility>

namespace health {

namespace {

constexpr std::size_t LongestEmergencyText = 200; // characters

// The pieces of a reply.
enum EmergencyPiece : PieceNumber {
    UrgencyPiece = 4,
    ArrivalPiece,
    OtherArrivalPiece,
    EnteredPiece,
    InformantPiece,
    NotifiedPiece,
    DispositionPiece,
    OtherDispositionPiece,
    DeparturePiece,
    AgainstAdvicePiece,
    ConditionPiece,
    TransferPiece,
};

template<std::size_t Count>
Text chosenCaption(OptionArray<Count>& group)
{
    if (group.chosen() == group.None)
        return {};
    const Text& caption = group[static_cast<std::size_t>(group.chosen())].caption();
    return caption.ends_with(L':') ? caption.substr(0, caption.size() - 1) : caption;
}

// For a field at the form's edge: words beside it would wrap letter by letter and push the rows apart.
Explanation movedBelow(Explanation explanation)
{
    explanation.below = std::exchange(explanation.beside, {});
    explanation.tone = Tone::Quiet;
    return explanation;
}

}

Explanation frmER::explainEntry(const Control& field)
{
    if (&field == &txtLoc)
        return movedBelow(explainLookup(txtLoc));
    if (&field == &txtCond)
        return lengthIfClose(txtCond.text(), LongestEmergencyText);
    for (const TextBox* const box : { &txtOther, &txtInformant, &txtDispOth }) {
        if (&field == box)
            return movedBelow(lengthIfClose(box->text(), LongestEmergencyText));
    }
    return {};
}

// --- What will be saved ---

SaveSummary frmER::summary()
{
    SummaryBuilder builder(m_stored);
    builder.addOption(L"Urgency", chosenCaption(opt), UrgencyPiece);
    builder.addOption(L"Means of Arrival", chosenCaption(optArrival), ArrivalPiece);
    builder.addText(L"Other Means", savedOther(), m_stored[OtherArrivalPiece]);
    builder.addOption(L"Entered ER by", chosenCaption(optEntered), EnteredPiece);
    builder.addText(L"Informant", txtInformant.text(), m_stored[InformantPiece]);
    builder.addOption(L"Notified", chosenCaption(optNotified), NotifiedPiece);
    builder.addOption(L"Disposition", chosenCaption(optDisch), DispositionPiece);
    builder.addText(L"Other Disposition", savedDisposition(), m_stored[OtherDispositionPiece]);
    addDeparture(builder);
    builder.addText(L"Discharge Condition", txtCond.text(), m_stored[ConditionPiece]);
    addPlace(builder);
    addOtherTexts(builder);
    return builder.take();
}

void frmER::addDeparture(SummaryBuilder& builder)
{
    const Text departure = dateEntered(datDepart);
    const bool isAdvised = !isAgainstAdvice();
    builder.addDate(L"Departure Date", isAdvised ? departure : Text(), DeparturePiece);
    builder.addDate(L"Left against Advice", isAdvised ? Text() : departure, AgainstAdvicePiece);
    if (!isAdvised && !departure.empty())
        builder.say(L"The departure is sent as the time at which the patient left against advice.");
    else if (!departure.empty() && departure == m_stored.date(AgainstAdvicePiece))
        builder.say(L"The time at which the patient left against advice is sent as the departure.");
}

void frmER::addPlace(SummaryBuilder& builder)
{
    const Text place = spacedName(pickedName(txtLoc));
    const bool isFacility = optTransfer.chosen() != 0;
    const Text root = isFacility ? L"AUTTLOC(" : L"AUTTVNDR(";
    const Text pointer = place.empty() ? Text() : txtLoc.tag() + L";" + root;
    builder.addEntry(L"Transferred to", place, pointer, m_stored.code(TransferPiece));
    const TextView stored = m_stored.display(TransferPiece);
    if (place.empty() && !stored.empty())
        builder.say(L"The place of the transfer, " + spacedName(stored) + L", is dropped.");
    if (!place.empty() && optTransfer.chosen() == optTransfer.None)
        builder.say(L"The place of the transfer is sent as a facility, because no option is chosen.");
}

void frmER::addOtherTexts(SummaryBuilder& builder)
{
    if (savedOther() != txtOther.text())
        builder.say(L"The other means of arrival is not sent, because its option is not chosen.");
    if (savedDisposition() != txtDispOth.text())
        builder.say(L"The other disposition is not sent, because its option is not chosen.");
}

// --- Refusals of the server ---

Control* frmER::fieldOf(TextView refusal)
{
    return fieldNamedIn(refusal,
        { { L"other means of arrival", &txtOther }, { L"informant", &txtInformant },
            { L"other disposition", &txtDispOth }, { L"condition on departure", &txtCond },
            { L"The departure ", &datDepart }, { L"outside the years", &datDepart },
            { L"place of the transfer", &txtLoc } });
}

}
