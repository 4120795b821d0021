#include "text/Pieces.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health {

TEST(Pieces, Piece)
{
    for (const auto& [text, delimiter, n, expected] :
        { std::tuple<TextView, TextView, short, TextView> { L"a^b^c", L"^", 1, L"a" }, { L"a^b^c", L"^", 2, L"b" },
            { L"a^b^c", L"^", 3, L"c" }, { L"a^b^c", L"^", 4, L"" }, { L"a^b^c", L"^", 0, L"" },
            { L"a^b^c", L"^", -2, L"a" }, { L"abc", L"^", 1, L"abc" }, { L"abc", L"^", 2, L"" },
            { L"abc", L"^", -1, L"" }, { L"^", L"^", 1, L"" }, { L"^", L"^", 2, L"" }, { L"^^", L"^", 2, L"" },
            { L"a^^", L"^", 2, L"" }, { L"^b", L"^", 1, L"" }, { L"^b", L"^", 2, L"b" }, { L"", L"^", 1, L"" },
            { L"a - b", L" - ", 2, L"b" }, { L"aXb", L"x", 1, L"aXb" }, { L"a", L"", 1, L"a" }, { L"a", L"", 2, L"" } })
        EXPECT_EQ(Piece(text, delimiter, n), expected) << narrow(text) << ' ' << n;
}

TEST(Pieces, SplitOnlyAppendsEmptyPieces)
{
    EXPECT_EQ(SplitPieces(L"a^b", L"^", 3), (std::vector<Text> { L"a", L"b", L"", L"" }));
    EXPECT_EQ(SplitPieces(L"a^b^c", L"^", 1), (std::vector<Text> { L"a", L"b", L"c" }));
    EXPECT_EQ(SplitPieces(L"", L"^", 3), std::vector<Text>(4));
    EXPECT_EQ(SplitPieces(L"a^", L"^", -1), (std::vector<Text> { L"a", L"" }));
}

TEST(Pieces, LinesOfAListReply)
{
    EXPECT_EQ(replyLines(L"a\r\nb\r\n"), (std::vector<TextView> { L"a", L"b" }));
    EXPECT_EQ(replyLines(L"a\r\nb"), (std::vector<TextView> { L"a" })); // unterminated: not a line
    EXPECT_EQ(replyLines(L"a\nb\rc\r\n"), (std::vector<TextView> { L"a\nb\rc" }));
    EXPECT_TRUE(replyLines(L"").empty());
}

TEST(Pieces, TranslateCharsReplacesInSequence)
{
    EXPECT_EQ(TranslateChars(L"RepHist-PedWtOpt", L"-", L"_"), L"RepHist_PedWtOpt");
    EXPECT_EQ(TranslateChars(L"abc", L"ab", L"bx"), L"xxc"); // a becomes b, then every b becomes x
    EXPECT_EQ(TranslateChars(L"a^b^", L"^", L""), L"ab");
    EXPECT_EQ(TranslateChars(L"", L"a", L"b"), L"");
}

TEST(Pieces, Comparisons)
{
    EXPECT_TRUE(SameText(L"Oral", L"ORAL"));
    EXPECT_TRUE(MatchesLeading(L"refresh", L"REFRESH", LetterCase::Ignored));
    EXPECT_FALSE(MatchesLeading(L"REF", L"REFRESH", LetterCase::Exact));
    EXPECT_TRUE(MatchesLeading(L"", L"", LetterCase::Exact));
}

}
