#include "editors/SummaryBuilder.h"

#include "editors/ExplanationTexts.h"
#include "text/Letters.h"

namespace health {

void SummaryBuilder::add(TextView caption, TextView value, bool isChanged)
{
    m_summary.parts.push_back({ Text(caption), Text(value), isChanged && m_stored.exists() });
}

void SummaryBuilder::addText(TextView caption, TextView value, TextView stored)
{
    // As in the record that is sent, where a "^" would shift the pieces after it.
    const Text sent = replaced(value, L"^", L" ");
    add(caption, sent, sent != stored);
    if (sent != value)
        say(Text(caption) + L": a \"^\" cannot be saved and becomes a blank.");
}

void SummaryBuilder::addChoice(TextView caption, const ComboBox& list, PieceNumber piece)
{
    const TextView stored = m_stored.display(piece);
    for (int item = 0; item < list.count(); ++item) {
        if (equalIgnoringCase(list.itemText(item), stored)) {
            add(caption, list.text(), !equalIgnoringCase(list.text(), stored));
            return;
        }
    }
    addOption(caption, list.text(), piece);
}

void SummaryBuilder::addOption(TextView caption, TextView chosen, PieceNumber piece)
{
    const TextView stored = m_stored.display(piece);
    add(caption, chosen, !equalIgnoringCase(chosen, stored));
    if (chosen.empty() && !stored.empty())
        say((caption.empty() ? Text(L"The") : Text(caption) + L": the") + L" stored " + quoted(stored)
            + L" is not among the choices, so it is sent empty.");
}

void SummaryBuilder::addEntry(TextView caption, TextView name, TextView number, TextView storedNumber)
{
    add(caption, name, number != storedNumber);
}

}
