// Pieces: splitting loses nothing and keeps the order. Input: text, delimiter, a number.
#include "fuzz/FuzzInput.h"
#include "text/Conversions.h"
#include "text/Pieces.h"

#include <algorithm>

namespace health::fuzz {
namespace {

void pieces(const Text& text, const Text& delimiter, short n)
{
    const auto split = SplitPieces(text, delimiter, -1);
    Text joined = split.front();
    for (std::size_t i = 1; i < split.size(); ++i)
        joined += delimiter + split[i];
    require(joined == text, "joining the pieces restores the text", text);
    for (std::size_t i = 0; i < split.size() && i < 500; ++i) {
        const TextView piece = pieceView(text, delimiter, static_cast<short>(i + 1));
        require(piece == split[i], "pieceView agrees with SplitPieces", text);
        require(delimiter.empty() || piece.find(delimiter) == TextView::npos, "no piece contains a delimiter", text);
    }
    if (n > 0 && static_cast<std::size_t>(n) > split.size())
        require(Piece(text, delimiter, n).empty(), "a piece beyond the last is empty", text);
    const auto enlarged = SplitPieces(text, delimiter, static_cast<short>(n % 1000));
    require(enlarged.size() >= split.size() && std::equal(split.begin(), split.end(), enlarged.begin()),
        "an upper bound only appends empty pieces", text);
}

void lines(const Text& text)
{
    Text terminated;
    for (const TextView line : replyLines(text)) {
        require(line.find(LineBreak) == TextView::npos, "a line contains no line break", text);
        terminated += Text(line) + Text(LineBreak);
    }
    require(text.starts_with(terminated), "the lines are the text's, in order", text);
    const TextView rest = TextView(text).substr(terminated.size());
    require(rest.find(LineBreak) == TextView::npos, "every terminated line is returned", text);
    require(recordLines(text).size() == replyLines(text).size() + !rest.empty(),
        "recordLines accepts an unterminated last line", text);
}

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace health;
    using namespace health::fuzz;
    Sections input(data, size);
    const Text text = input.next();
    const Text delimiter = input.next();
    const auto n = static_cast<short>(roundToWhole(leadingNumber(input.next())));
    pieces(text, delimiter.empty() ? L"^" : delimiter, n);
    pieces(text, L"", 2);
    lines(text);
    return 0;
}
