#include "control/SummaryText.h"

#include "text/FileManDates.h"
#include "text/Letters.h"
#include "text/Pieces.h"

namespace health {

namespace {
constexpr TextView FieldSeparator = L"; ";
constexpr TextView DateSeparator = L": ";
}

void appendField(Text& text, TextView caption, TextView piece, FieldCase fieldCase)
{
    const TextView value = displayPart(piece);
    if (value.empty())
        return;
    if (!text.empty())
        text += FieldSeparator;
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
    text += DateSeparator;
}

}
