// Pieces: what is taken apart is the whole, in order. Input: text, delimiter, a number.
#include "fuzz/FuzzInput.h"
#include "text/Conversions.h"
#include "text/Pieces.h"

#include <algorithm>

namespace health::fuzz {
namespace {

template<typename Pieces>
Text joined(const Pieces& pieces, TextView delimiter)
{
    Text text;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        text += Text(i == 0 ? TextView() : delimiter) + Text(pieces[i]);
    return text;
}

void pieces(const Text& text, const Text& delimiter, short n)
{
    const auto split = SplitPieces(text, delimiter, -1);
    require(joined(split, delimiter) == text, "joining what was split gives the text", text);
    for (std::size_t i = 0; i < split.size() && i < 500; ++i) {
        const TextView piece = pieceView(text, delimiter, static_cast<short>(i + 1));
        require(piece == split[i], "each piece is that of the split", text);
        require(
            piece.empty() || (piece.data() >= text.data() && piece.data() + piece.size() <= text.data() + text.size()),
            "a piece lies in its text", text);
        require(delimiter.empty() || piece.find(delimiter) == TextView::npos, "no piece has a delimiter", text);
    }
    const bool counted = n > 0 && static_cast<std::size_t>(n) <= split.size();
    const bool negative = n < 0 && split.size() > 1;
    require(Piece(text, delimiter, n)
            == (counted        ? split[static_cast<std::size_t>(n - 1)]
                    : negative ? split[0]
                               : Text()),
        "a number without a piece gives none", text);
    const short bound = static_cast<short>(n % 1000);
    const auto enlarged = SplitPieces(text, delimiter, bound);
    require(enlarged.size() == std::max(split.size(), static_cast<std::size_t>(std::max(0, bound + 1))),
        "splitting only enlarges", text);
    require(std::equal(split.begin(), split.end(), enlarged.begin()), "enlarging keeps the pieces", text);
}

void lines(const Text& text)
{
    Text terminated;
    for (const TextView line : replyLines(text)) {
        require(line.find(LineBreak) == TextView::npos, "a line has no line end", text);
        terminated += Text(line) + Text(LineBreak);
    }
    require(text.starts_with(terminated), "lines are the text's own, in order", text);
    const Text rest = text.substr(terminated.size());
    require(rest.find(LineBreak) == Text::npos, "no terminated line is left out", text);
    auto expected = replyLines(text);
    if (!rest.empty())
        expected.push_back(rest);
    require(recordLines(text) == expected, "a record's last line may lack its end", text);
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
    const Text number = input.next();
    pieces(text, delimiter.empty() ? L"^" : delimiter, static_cast<short>(roundToWhole(leadingNumber(number))));
    pieces(text, L"", 2);
    lines(text);
    return 0;
}
