// What the treatment contract's form says about its entries.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmTxc.h"

namespace health {

namespace {

constexpr PieceNumber VisitDatePiece = 3;
constexpr PieceNumber TypePiece = 4;
constexpr PieceNumber InitiatedPiece = 5;
constexpr PieceNumber ProviderPiece = 6;

}

Explanation frmTxc::explainEntry(const Control& field)
{
    return &field == &txtPrv ? explainLookup(txtPrv) : Explanation {};
}

SaveSummary frmTxc::summary()
{
    SummaryBuilder builder(m_stored);
    addInitiated(builder);
    builder.addOption(
        L"Type", opt.chosen() == opt.None ? Text() : opt[static_cast<std::size_t>(opt.chosen())].caption(), TypePiece);
    builder.addEntry(L"Provider", spacedName(pickedName(txtPrv)), pickedId(txtPrv), m_stored.code(ProviderPiece));
    return builder.take();
}

void frmTxc::addInitiated(SummaryBuilder& builder) const
{
    Text sent = dateEntered(datInit);
    if (sent.empty()) {
        sent = defaultDateText(m_shared.desktop().now());
        builder.say(L"The empty date is sent as the present date and time.");
    }
    builder.addDate(L"Initiated", sent, InitiatedPiece);
    if (!m_stored.exists())
        return;
    const Text stored = m_stored.date(InitiatedPiece);
    if (stored.empty() && sent == pieceView(m_stored.date(VisitDatePiece), L" ", 1))
        builder.say(L"The stored contract has no date of its own; the visit's date is sent.");
    else if (stored != sent && pieceView(stored, L" ", 1) == sent)
        builder.say(L"The stored time of day, " + Piece(stored, L" ", 2) + L", is not sent.");
}

Control* frmTxc::fieldOf(TextView refusal)
{
    return fieldNamedIn(refusal,
        { { L"type of contract", &opt[0] }, { L"date initiated", &datInit }, { L"contract cannot begin", &datInit },
            { L"outside the years", &datInit }, { L"provider is not known", &txtPrv } });
}

}
