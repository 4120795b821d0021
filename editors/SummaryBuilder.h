#pragma once

#include "editors/StoredRecord.h"
#include "platform/Explanation.h"
#include "platform/controls/ComboBox.h"

namespace health {

// Puts together what a form will save, part by part, and compares each part with the record that was read. Of a record
// that is added, no part is changed.
class SummaryBuilder {
public:
    explicit SummaryBuilder(const StoredRecord& stored)
        : m_stored(stored)
    {
    }

    // A free text; the stored one is compared letter by letter.
    void addText(TextView caption, TextView value, TextView stored);
    // A date as it is sent.
    void addDate(TextView caption, TextView value, PieceNumber piece) { addText(caption, value, m_stored.date(piece)); }
    // A coded value; letter case does not count. Both report a stored value that the form does not offer and therefore
    // sends empty. An option, once chosen, cannot be cleared by the user.
    void addChoice(TextView caption, const ComboBox& list, PieceNumber piece);
    void addOption(TextView caption, TextView chosen, PieceNumber piece);
    // An entry of a table: its name, and the number that is sent.
    void addEntry(TextView caption, TextView name, TextView number, TextView storedNumber);
    void add(TextView caption, TextView value, bool isChanged);

    // A sentence about something that is saved differently from what the form shows.
    void say(Text sentence) { m_summary.surprises.push_back(std::move(sentence)); }

    SaveSummary take() { return std::move(m_summary); }

private:
    const StoredRecord& m_stored;
    SaveSummary m_summary;
};

}
