#include "editors/StoredRecord.h"

#include "text/FileManDates.h"

namespace health {

void StoredRecord::read(const LinePieces& pieces)
{
    m_exists = true;
    for (PieceNumber piece = 1; piece <= LinePieces::Places; ++piece) {
        if (!pieces[piece].empty())
            m_pieces[static_cast<std::size_t>(piece)] = pieces[piece];
    }
}

Text StoredRecord::date(PieceNumber piece) const
{
    const TextView stored = display(piece);
    const Text date = fmDateToDisplay(stored);
    return date.empty() ? Text(stored) : date;
}

}
