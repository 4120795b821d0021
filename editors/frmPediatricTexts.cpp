// What the birth measurements' form says about its entries.
#include "editors/BirthWeight.h"
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmPediatric.h"

namespace health {

namespace {

// In the order of the boxes: the list's captions, and the pieces of a reply after the weight's.
constexpr std::array<TextView, frmPediatric::Boxes> BoxCaptions { L"Birth Weight", L"Birth Order", L"Formula Started",
    L"Breast Stopped", L"Solids Started" };
constexpr PieceNumber OrderPiece = 10;
constexpr PieceNumber MotherPiece = 14;

}

Explanation frmPediatric::explainEntry(const Control& field)
{
    if (&field == &txt[0])
        return explainWeight();
    if (&field == &txt[1])
        return explainOrder();
    if (&field == &txtPat)
        return explainLookup(txtPat);
    for (std::size_t i = 2; i < Boxes; ++i) {
        if (&field == &txt[i])
            return explainAge(txt[i]);
    }
    return {};
}

Explanation frmPediatric::explainWeight() const
{
    const Text entry = upperCase(txt[0].text());
    if (entry.empty())
        return {};
    const Text saved = savedWeight();
    const auto weight = birthWeight(saved);
    if (Explanation fault = weightFault(saved); !fault.beside.empty() && (!weight || !txt[0].isAsLoaded()))
        return fault;
    return besideField(weight ? otherUnits(*weight, unitOf(saved), entry == saved) : Text());
}

Explanation frmPediatric::explainOrder() const
{
    const bool isRefused = !txt[1].text().empty() && !txt[1].isAsLoaded() && !isBetween(txt[1].text(), 0, 25);
    return isRefused ? besideField(L"from 1 to 24", Tone::Error) : Explanation {};
}

Explanation frmPediatric::explainAge(const TextBox& box) const
{
    const Text entry = upperCase(box.text());
    if (entry.empty())
        return {};
    if (m_patientAge && m_patientAge->isBelow(entry))
        return besideField(ageInWords(entry) + L" \u00B7 older than the patient", Tone::Caution);
    if (box.isAsLoaded() || isValidAge(entry))
        return besideField(ageInWords(entry));
    if (isBetween(entry, 0, 999))
        return besideField(L"then D, W, M or Y");
    return besideField(L"a number below 999, then D, W, M or Y", Tone::Error);
}

// --- What will be saved ---

Text frmPediatric::storedWeight() const
{
    return BirthWeight { m_stored[1], m_stored[2], m_stored[3], m_stored[4] }.text();
}

SaveSummary frmPediatric::summary()
{
    SummaryBuilder builder(m_stored);
    const Text entry = upperCase(txt[0].text());
    const auto weight = birthWeight(savedWeight());
    // A text that is not a weight is sent as it is, and refused.
    const Text words = weight ? weight->text() : entry.empty() ? Text() : savedWeight();
    // A weight that was only read is sent again; its conversion may round differently.
    builder.add(BoxCaptions[0], words, m_stored.exists() && !txt[0].isAsLoaded() && words != storedWeight());
    if (!entry.empty() && entry != savedWeight())
        builder.say(L"The weight has no letter, so it is sent in the present unit: " + savedWeight() + L".");
    for (std::size_t i = 1; i < Boxes; ++i) {
        const Text sent = upperCase(txt[i].text());
        builder.addText(BoxCaptions[i], sent, m_stored[OrderPiece + static_cast<PieceNumber>(i) - 1]);
        if (sent != txt[i].text())
            builder.say(Text(BoxCaptions[i]) + L" is sent in capitals: " + sent + L".");
    }
    builder.addEntry(L"Mother", spacedName(pickedName(txtPat)), pickedId(txtPat), m_stored.code(MotherPiece));
    return builder.take();
}

// --- Refusals of the server ---

Control* frmPediatric::fieldOf(TextView refusal)
{
    for (std::size_t i = 2; i < Boxes; ++i) {
        if (refusal.find(L"The age " + upperCase(txt[i].text()) + L" ") != TextView::npos)
            return &txt[i];
    }
    return fieldNamedIn(
        refusal, { { L"birth weight", &txt[0] }, { L"birth order", &txt[1] }, { L"mother or guardian", &txtPat } });
}

}
