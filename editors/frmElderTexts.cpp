// What the functional status form says about its entries.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmElder.h"
#include "text/Conversions.h"
#include "text/Letters.h"

namespace health {

namespace {

PieceNumber pieceOf(std::size_t item) { return FirstFunctionalPiece + static_cast<PieceNumber>(item); }

// The place of a text among the choices of an item; -1 if it is not one of them.
int rankOf(const FunctionalItem& item, TextView text)
{
    for (std::size_t i = 0; i < item.choices.size(); ++i) {
        if (equalIgnoringCase(item.choices[i], text))
            return static_cast<int>(i);
    }
    return -1;
}

}

Explanation frmElder::explainEntry(const Control& field)
{
    if (&field == &fra[0])
        return countIndependent(0, DailyLivingItems);
    if (&field == &fra[1])
        return countIndependent(DailyLivingItems, InstrumentalItems);
    for (std::size_t i = 0; i < FunctionalItemCount; ++i) {
        if (&field == &cbo[i])
            return explainItem(i);
    }
    return {};
}

// The levels of an item begin with the best.
Explanation frmElder::explainItem(std::size_t item) const
{
    const TextView stored = m_stored.display(pieceOf(item));
    Explanation explanation = besideField(wasText(properCase(stored), cbo[item].text()));
    const int before = rankOf(FunctionalItems[item], stored);
    const int now = cbo[item].listIndex();
    if (item < InstrumentalItems && before != -1 && now != -1 && now != before)
        explanation.tone = now > before ? Tone::Caution : Tone::Good;
    return explanation;
}

// "2 of 6 independent"; empty while none of the items has an answer.
Explanation frmElder::countIndependent(std::size_t first, std::size_t last) const
{
    std::size_t independent = 0;
    bool isAnswered = false;
    for (std::size_t i = first; i < last; ++i) {
        independent += cbo[i].listIndex() == 0 ? 1u : 0u;
        isAnswered = isAnswered || cbo[i].listIndex() != -1;
    }
    const auto text = [](std::size_t count) { return wholeText(static_cast<long long>(count)); };
    return besideField(isAnswered ? text(independent) + L" of " + text(last - first) + L" independent" : Text());
}

SaveSummary frmElder::summary()
{
    SummaryBuilder builder(m_stored);
    const auto add = [&](std::size_t item) {
        builder.addChoice(FunctionalItems[item].listName, cbo[item], pieceOf(item));
    };
    for (std::size_t i = InstrumentalItems; i < FunctionalItemCount; ++i)
        add(i);
    for (std::size_t i = 0; i < InstrumentalItems; ++i)
        add(i);
    return builder.take();
}

Control* frmElder::fieldOf(TextView refusal)
{
    for (ComboBox& list : cbo) {
        if (!list.text().empty() && refusal.find(L"answer " + list.text() + L" ") != TextView::npos)
            return &list;
    }
    return nullptr;
}

}
