// What the asthma form says about its entries.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmAsthma.h"
#include "text/Letters.h"

namespace health {

namespace {

// The list's captions, in the order of the pieces.
constexpr std::array<TextView, 3> LungCaptions { L"FEV", L"FEF", L"PEF" };
constexpr std::array<TextView, 4> AnswerCaptions { L"ETS", L"Particulates", L"Dust Mites", L"Mgt. Plan" };
constexpr PieceNumber SeverityPlace = 4;
constexpr PieceNumber FirstLungPlace = 5;
constexpr PieceNumber FirstAnswerPlace = 8;

PieceNumber place(PieceNumber first, std::size_t index) { return first + static_cast<PieceNumber>(index); }

}

Explanation frmAsthma::explainEntry(const Control& field)
{
    if (&field == &cboSeverity)
        return besideField(wasText(properCase(m_stored.display(SeverityPlace)), cboSeverity.text()));
    for (std::size_t i = 0; i < txt.size(); ++i) {
        if (&field == &txt[i])
            return explainLung(i);
    }
    for (std::size_t i = 0; i < cbo.size(); ++i) {
        if (&field == &cbo[i])
            return besideField(wasText(properCase(m_stored.display(place(FirstAnswerPlace, i))), cbo[i].text()));
    }
    return {};
}

Explanation frmAsthma::explainLung(std::size_t index) const
{
    Explanation explanation = belowField(lungRange(index, L" to "));
    explanation.beside = lungFault(index);
    if (!explanation.beside.empty())
        explanation.tone = Tone::Error;
    else
        explanation.beside = wasText(m_stored[place(FirstLungPlace, index)], txt[index].text());
    return explanation;
}

SaveSummary frmAsthma::summary()
{
    SummaryBuilder builder(m_stored);
    builder.addChoice(L"Severity", cboSeverity, SeverityPlace);
    for (std::size_t i = 0; i < txt.size(); ++i)
        builder.addText(LungCaptions[i], txt[i].text(), m_stored[place(FirstLungPlace, i)]);
    for (std::size_t i = 0; i < cbo.size(); ++i)
        builder.addChoice(AnswerCaptions[i], cbo[i], place(FirstAnswerPlace, i));
    return builder.take();
}

Control* frmAsthma::fieldOf(TextView refusal)
{
    // Of several impossible values, the server names the last.
    for (std::size_t i = txt.size(); i-- > 0;) {
        if (!txt[i].text().empty() && refusal.find(L"value " + txt[i].text() + L" ") != TextView::npos)
            return &txt[i];
    }
    return fieldNamedIn(refusal, { { L"severity", &cboSeverity } });
}

}
