#pragma once

#include "text/Pieces.h"

#include <array>

namespace health {

// The "^"-pieces of a record as the server sent them, for comparisons with what a form is about to save.
class StoredRecord {
public:
    // Takes the pieces of a line. A record of several lines keeps the last non-empty text of each piece, as the forms
    // do.
    void read(const LinePieces& pieces);

    // False for a record that is added.
    bool exists() const { return m_exists; }

    // Empty for a piece that the record does not have.
    const Text& operator[](PieceNumber piece) const { return m_pieces.at(static_cast<std::size_t>(piece)); }
    TextView display(PieceNumber piece) const { return displayPart((*this)[piece]); }
    TextView code(PieceNumber piece) const { return codePart((*this)[piece]); }
    // The date of a piece as the forms show it; the text itself if it is not a date.
    Text date(PieceNumber piece) const;

private:
    std::array<Text, LinePieces::Places + 1> m_pieces;
    bool m_exists = false;
};

}
