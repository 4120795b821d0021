// Building blocks of the one-line summary of a record.
#pragma once

#include "platform/Text.h"

#include <array>

namespace health {

// The "^"-pieces of one record line, found once and counted from 1. Views into the line, which must
// outlive the object. A piece that the line does not have is empty; those after the last place are not kept.
class LinePieces {
public:
    static constexpr int Places = 20;

    explicit LinePieces(TextView line);

    TextView operator[](int piece) const
    {
        return piece <= m_count ? m_pieces[static_cast<std::size_t>(piece - 1)] : TextView();
    }

private:
    std::array<TextView, Places> m_pieces;
    int m_count = 0;
};

// What stands before the first "|" of a piece.
TextView displayPart(TextView piece);

enum class FieldCase {
    Proper, // each word with a capital, also after a comma
    Kept,
};

// Appends "caption=value" (or the value alone), with "; " before it where the text is not empty. Nothing for
// a piece without a display part.
void appendField(Text& text, TextView caption, TextView piece, FieldCase fieldCase = FieldCase::Proper);

// Appends "mm/dd/yyyy: " or "mm/dd/yyyy hh:mm: " for the date in a piece's display part; nothing without one.
void appendDateLead(Text& text, TextView piece);

}
