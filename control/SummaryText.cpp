#include "control/SummaryText.h"

#include "platform/Letters.h"
#include "shared/FileManDates.h"

namespace health {

LinePieces::LinePieces(TextView line)
{
    while (m_count < Places) {
        const std::size_t end = line.find(L'^');
        m_pieces[static_cast<std::size_t>(m_count++)] = line.substr(0, end);
        if (end == TextView::npos)
            return;
        line.remove_prefix(end + 1);
    }
}

TextView displayPart(TextView piece) { return piece.substr(0, piece.find(L'|')); }

void appendField(Text& text, TextView caption, TextView piece, FieldCase fieldCase)
{
    const TextView value = displayPart(piece);
    if (value.empty())
        return;
    if (!text.empty())
        text += L"; ";
    if (!caption.empty()) {
        text += caption;
        text += L'=';
    }
    if (fieldCase == FieldCase::Kept)
        text += value;
    else
        appendProperCase(text, value, WordStart::AfterBlankOrComma);
}

void appendDateLead(Text& text, TextView piece)
{
    const Text date = fmDateToDisplay(displayPart(piece));
    if (date.empty())
        return;
    text += date;
    text += L": ";
}

}
