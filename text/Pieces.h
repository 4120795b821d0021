// Taking texts apart: delimited pieces, characters, comparisons.
#pragma once

#include "api/Text.h"

#include <array>
#include <vector>

namespace health {

// Ends each line of a list reply, and each line of a text of several lines.
inline constexpr TextView LineBreak = L"\r\n";

// The position of a piece in a delimited text, counted from 1.
using PieceNumber = int;

// The n-th piece of a text, as a view into it; empty if there is none. Where the delimiter occurs, a negative n
// counts as 1.
TextView pieceView(TextView text, TextView delimiter, PieceNumber n);
inline Text Piece(TextView text, TextView delimiter, PieceNumber n) { return Text(pieceView(text, delimiter, n)); }

// All pieces, with empty texts added until the last index is at least `minimumUpperBound`.
std::vector<Text> SplitPieces(TextView text, TextView delimiter, short minimumUpperBound);

// The pieces as one text, parted by "^": a record as it is saved. A "^" inside a piece would shift those behind it and
// becomes a blank.
Text joinPieces(const std::vector<Text>& pieces);

// What stands before and behind the first "|" of a piece: the text that is shown, and its code or number.
inline TextView displayPart(TextView piece) { return piece.substr(0, piece.find(L'|')); }
inline TextView codePart(TextView piece) { return pieceView(piece, L"|", 2); }

// The "^"-pieces of one record line, found once and counted from 1. Views into the line, which must
// outlive the object. A piece that the line does not have is empty; those after the last place are not kept.
class LinePieces {
public:
    static constexpr PieceNumber Places = 20;

    explicit LinePieces(TextView line);

    TextView operator[](PieceNumber piece) const
    {
        return piece >= 1 && piece <= m_count ? m_pieces.begin()[piece - 1] : TextView();
    }

private:
    std::array<TextView, Places> m_pieces;
    PieceNumber m_count = 0;
};

// Does something with each line of a list reply; what stands after the last CR LF is none. A long reply is gone
// through once.
template<typename Work>
void forEachLine(TextView reply, Work work)
{
    for (std::size_t end = reply.find(LineBreak); end != TextView::npos; end = reply.find(LineBreak)) {
        work(reply.substr(0, end));
        reply.remove_prefix(end + LineBreak.size());
    }
}

// The lines all at once. Views into `reply`.
std::vector<TextView> replyLines(TextView reply);

// The same for a record that is read whole: a last line without its CR LF counts too.
std::vector<TextView> recordLines(TextView reply);

// Replaces each of the from-characters by the to-character at its position, or deletes it where there is none.
// One after the other: what one replacement wrote, a later one may replace again.
Text TranslateChars(TextView text, TextView from, TextView to);

// Each occurrence of a text, which is not empty, replaced by another; what was put in is not looked at again.
Text replaced(TextView text, TextView from, TextView to);

bool SameText(TextView a, TextView b);

enum class LetterCase {
    Exact,
    Ignored,
};

// The text begins with the prefix; an empty prefix always matches.
bool MatchesLeading(TextView text, TextView prefix, LetterCase letterCase);

}
