// Taking texts apart: delimited pieces, characters, comparisons.
#pragma once

#include "api/Text.h"

#include <array>
#include <vector>

namespace health {

// The end of each line in a list reply and in a multi-line text.
inline constexpr TextView LineBreak = L"\r\n";

// The position of a piece in a delimited text, counted from 1.
using PieceNumber = int;

// The n-th piece of a text, as a view into it; empty if the text has fewer pieces. Where the delimiter occurs, a
// negative n counts as 1.
TextView pieceView(TextView text, TextView delimiter, PieceNumber n);
inline Text Piece(TextView text, TextView delimiter, PieceNumber n) { return Text(pieceView(text, delimiter, n)); }

// All pieces, with empty texts added until the last index is at least `minimumUpperBound`.
std::vector<Text> SplitPieces(TextView text, TextView delimiter, short minimumUpperBound);

// The pieces as one text, separated by "^": a record as it is saved. A "^" inside a piece becomes a blank, because it
// would shift the pieces after it.
Text joinPieces(const std::vector<Text>& pieces);

// The parts of a piece before and after its first "|": the text that is shown, and its code or number.
inline TextView displayPart(TextView piece) { return piece.substr(0, piece.find(L'|')); }
inline TextView codePart(TextView piece) { return pieceView(piece, L"|", 2); }

// The "^"-pieces of one record line, located once. Views into the line, which must outlive the object. A piece that the
// line does not have is empty, and so is one after the last place.
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

// Calls `work` with each line of a list reply; text after the last CR LF is not a line. Runs in linear time.
template<typename Work>
void forEachLine(TextView reply, Work work)
{
    for (std::size_t end = reply.find(LineBreak); end != TextView::npos; end = reply.find(LineBreak)) {
        work(reply.substr(0, end));
        reply.remove_prefix(end + LineBreak.size());
    }
}

// The lines of a list reply, as views into it.
std::vector<TextView> replyLines(TextView reply);

// The same, but text after the last CR LF counts as a line: some records end without one.
std::vector<TextView> recordLines(TextView reply);

// Replaces each of the from-characters by the to-character at its position, or deletes it if
// that list is shorter. Works through the from-characters one by one, so a later one may replace what an earlier one
// wrote.
Text TranslateChars(TextView text, TextView from, TextView to);

// Replaces each occurrence of `from`, which must not be empty, by `to`. Replacements are not rescanned.
Text replaced(TextView text, TextView from, TextView to);

bool SameText(TextView a, TextView b);

enum class LetterCase {
    Exact,
    Ignored,
};

// The text starts with the prefix; an empty prefix always matches.
bool MatchesLeading(TextView text, TextView prefix, LetterCase letterCase);

}
