#include "text/Pieces.h"

#include "text/Letters.h"

#include <algorithm>

namespace health {

TextView pieceView(TextView text, TextView delimiter, PieceNumber n)
{
    if (n == 0 || text == delimiter)
        return {};
    std::size_t end = delimiter.empty() ? TextView::npos : text.find(delimiter);
    if (end == TextView::npos)
        return n == 1 ? text : TextView();
    for (; n > 1; --n) {
        if (end == TextView::npos)
            return {};
        text.remove_prefix(end + delimiter.size());
        end = text.find(delimiter);
    }
    return text.substr(0, end);
}

Text joinPieces(const std::vector<Text>& pieces)
{
    Text joined;
    for (const Text& piece : pieces)
        joined += L"^" + TranslateChars(piece, L"^", L" ");
    return joined.empty() ? joined : joined.substr(1);
}

std::vector<Text> SplitPieces(TextView text, TextView delimiter, short minimumUpperBound)
{
    std::vector<Text> pieces;
    std::size_t end = delimiter.empty() ? TextView::npos : text.find(delimiter);
    while (end != TextView::npos) {
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end + delimiter.size());
        end = text.find(delimiter);
    }
    pieces.emplace_back(text);
    const auto minimum = static_cast<std::size_t>(std::max(0, minimumUpperBound + 1));
    if (pieces.size() < minimum)
        pieces.resize(minimum);
    return pieces;
}

LinePieces::LinePieces(TextView line)
{
    while (m_count < Places) {
        const std::size_t end = line.find(L'^');
        m_pieces.begin()[m_count++] = line.substr(0, end);
        if (end == TextView::npos)
            return;
        line.remove_prefix(end + 1);
    }
}

std::vector<TextView> replyLines(TextView reply)
{
    std::vector<TextView> lines;
    forEachLine(reply, [&](TextView line) { lines.push_back(line); });
    return lines;
}

std::vector<TextView> recordLines(TextView reply)
{
    std::vector<TextView> lines = replyLines(reply);
    const std::size_t end = reply.rfind(LineBreak);
    const TextView rest = end == TextView::npos ? reply : reply.substr(end + LineBreak.size());
    if (!rest.empty())
        lines.push_back(rest);
    return lines;
}

Text TranslateChars(TextView text, TextView from, TextView to)
{
    Text result(text);
    for (std::size_t i = 0; i < from.size(); ++i) {
        if (i < to.size())
            std::replace(result.begin(), result.end(), from[i], to[i]);
        else
            std::erase(result, from[i]);
    }
    return result;
}

Text replaced(TextView text, TextView from, TextView to)
{
    Text result;
    for (std::size_t end = text.find(from); end != TextView::npos; end = text.find(from)) {
        result += text.substr(0, end);
        result += to;
        text.remove_prefix(end + from.size());
    }
    result += text;
    return result;
}

bool SameText(TextView a, TextView b) { return equalIgnoringCase(a, b); }

bool MatchesLeading(TextView text, TextView prefix, LetterCase letterCase)
{
    const TextView leading = text.substr(0, prefix.size());
    return letterCase == LetterCase::Exact ? leading == prefix : equalIgnoringCase(leading, prefix);
}

}
