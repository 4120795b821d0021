// What the reproductive history's form says about its entries.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmRepHist.h"
#include "text/Conversions.h"
#include "text/Letters.h"

namespace health {

namespace {

// The pieces of a reply.
enum ReproductivePiece : PieceNumber {
    CountsPiece = 1,
    PeriodPiece,
    MethodPiece,
    MethodDatePiece,
    EstimatePiece,
    DeliveryPiece,
};

// The boxes.
enum CountBox : std::size_t {
    Gravidity,
    Parity,
    LivingChildren,
    Spontaneous,
    Therapeutic,
};

}

Explanation frmRepHist::explainEntry(const Control& field)
{
    for (std::size_t i = 0; i < CountBoxes; ++i) {
        if (&field == &txNumRH[i] || &field == &udNumRH[i])
            return explainCount(i);
    }
    return {};
}

Explanation frmRepHist::explainCount(std::size_t index) const
{
    const UpDown& range = udNumRH[index];
    Explanation explanation = besideField(impossibleCount(index), Tone::Caution);
    explanation.below =
        Text(CountNames[index]) + L", " + wholeText(range.minimum()) + L" to " + wholeText(range.maximum());
    return explanation;
}

// Why the counts cannot be, at the box that shows it; empty if they can. The text stands at the end of the row and
// therefore names the count. A pregnancy counts once in P, however many
// children it had: living children are therefore impossible only without any delivery.
Text frmRepHist::impossibleCount(std::size_t index) const
{
    const auto count = [this](CountBox box) { return leadingNumber(txNumRH[box].text()); };
    if (index == Parity && count(Parity) > count(Gravidity))
        return L"P is more than G";
    const bool tooMany = count(Parity) + count(Spontaneous) + count(Therapeutic) > count(Gravidity);
    if (index == Gravidity && count(Parity) <= count(Gravidity) && tooMany)
        return L"G is less than P, SA and TA together";
    return index == LivingChildren && count(LivingChildren) > 0 && count(Parity) == 0 ? L"P is 0, but LC is not"
                                                                                      : Text();
}

// --- What will be saved ---

SaveSummary frmRepHist::summary()
{
    SummaryBuilder builder(m_stored);
    builder.addText(L"", countString(), upperCase(m_stored[CountsPiece]));
    builder.addDate(L"LMP", dateEntered(datLMP), PeriodPiece);
    builder.addChoice(L"Contraceptive Method", cboFP, MethodPiece);
    builder.addDate(L"Date FP Began", dateEntered(datFP), MethodDatePiece);
    if (m_eligible.value_or(true)) // known since the form was opened
        addPregnancy(builder);
    if (m_unread)
        builder.say(L"The record could not be read: these values replace what it holds.");
    return builder.take();
}

// Without the pregnancy flag the server files neither piece, although both are sent; the parts show what is filed.
void frmRepHist::addPregnancy(SummaryBuilder& builder)
{
    const Text delivery = dateEntered(datDelivery);
    const bool wasPregnant = !m_stored[DeliveryPiece].empty() || !m_stored[EstimatePiece].empty();
    builder.add(L"Pregnant", chkPregnant.isChecked() ? L"Yes" : L"No", chkPregnant.isChecked() != wasPregnant);
    if (chkPregnant.isChecked()) {
        builder.addDate(L"Pregnant: Est. Delivery", delivery, DeliveryPiece);
        builder.addChoice(L"Determined by", cboEstMethod, EstimatePiece);
        if (delivery.find(L' ') != Text::npos)
            builder.say(L"The estimated delivery is saved without its time of day.");
        return;
    }
    builder.addDate(L"Pregnant: Est. Delivery", {}, DeliveryPiece);
    builder.add(L"Determined by", {}, !m_stored[EstimatePiece].empty());
    if (!delivery.empty() || !cboEstMethod.text().empty())
        builder.say(
            L"Pregnant is not checked: the estimated delivery and how it was determined are sent, but not saved.");
}

// --- Refusals of the server ---

Control* frmRepHist::fieldOf(TextView refusal)
{
    // Of several faulty dates, the server names the one that comes first here.
    for (mevZvDate* const date : { &datLMP, &datFP, &datDelivery }) {
        if (!date->isEmpty() && refusal.starts_with(date->value() + L" is "))
            return date;
    }
    return fieldNamedIn(refusal,
        { { L"counts", &txNumRH[Gravidity] }, { L"last menstrual period", &datLMP },
            { L"family planning method", &cboFP }, { L"way of determining", &cboEstMethod },
            { L"estimated delivery", &datDelivery }, { L"pregnancy flag", &chkPregnant } });
}

}
