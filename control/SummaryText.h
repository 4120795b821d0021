// Building blocks of the one-line summary of a record.
#pragma once

#include "api/Text.h"

namespace health {

enum class FieldCase {
    Proper, // each word with a capital, also after a comma
    Kept,
};

// Appends "caption=value" (or the value alone), preceded by "; " if the text is not empty. Appends nothing for a piece
// without a display part.
void appendField(Text& text, TextView caption, TextView piece, FieldCase fieldCase = FieldCase::Proper);

// Appends "mm/dd/yyyy: " or "mm/dd/yyyy hh:mm: " for the date in a piece's display part, if there is one.
void appendDateLead(Text& text, TextView piece);

}
