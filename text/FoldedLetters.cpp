#include "text/FoldedLetters.h"

#include "text/Letters.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace health {

namespace {

// The letter below the accent for each letter of a block; "." for letters that have none. A capital stands for two
// letters, see LetterPairs.
struct Block {
    wchar_t first;
    std::string_view letters;
};

constexpr Block Blocks[] {
    { 0xC0,
        "aaaaaaAceeeeiiiidnooooo.ouuuuyTSaaaaaaAceeeeiiiidnooooo.ouuuuyTy"
        "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiiiIIjjkkklllllll"
        "lllnnnnnnnnnooooooOOrrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs"
        "b......................i..l.....oo.............uu....zz........."
        "....ZZZLLLNNNaaiioouuuuuuuuuu.aaaaAAggggkkoooo..jZZZgg..nnaaAAoo"
        "aaaaeeeeiiiioooorrrruuuusstt..hh.d....aaeeooooooooyy.........l.."
        "...b............" },
    { 0x1E00,
        "aabbbbbbccddddddddddeeeeeeeeeeffgghhhhhhhhhhiiiikkkkkkllllllllmm"
        "mmmmnnnnnnnnoooooooopppprrrrrrrrssssssssssttttttttuuuuuuuuuuvvvv"
        "wwwwwwwwwwxxxxyyzzzzzzhtwy....S.aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeee"
        "eeeeeeeeiiiioooooooooooooooooooooooouuuuuuuuuuuuuuyyyyyyyy......" },
};

constexpr std::pair<char, TextView> LetterPairs[] { { 'A', L"ae" }, { 'I', L"ij" }, { 'L', L"lj" }, { 'N', L"nj" },
    { 'O', L"oe" }, { 'S', L"ss" }, { 'T', L"th" }, { 'Z', L"dz" } };

bool isIn(wchar_t letter, wchar_t first, wchar_t last) { return letter >= first && letter <= last; }

bool isLeftOut(wchar_t letter)
{
    constexpr wchar_t softHyphen = 0xAD;
    return letter == softHyphen || isIn(letter, 0x300, 0x36F) || isIn(letter, 0x1AB0, 0x1AFF)
        || isIn(letter, 0x1DC0, 0x1DFF) || isIn(letter, 0x20D0, 0x20FF) || isIn(letter, 0xFE20, 0xFE2F);
}

// Of the plain signs on a keyboard, for those that programs replace while the user types.
wchar_t plainSign(wchar_t letter)
{
    if (letter == 0xA0 || letter == 0x202F || isIn(letter, 0x2000, 0x200A))
        return L' ';
    if (isIn(letter, 0x2010, 0x2015) || letter == 0x2212)
        return L'-';
    if (letter == 0x2018 || letter == 0x2019)
        return L'\'';
    return letter == 0x201C || letter == 0x201D ? L'"' : letter;
}

char baseOf(wchar_t letter)
{
    for (const Block& block : Blocks) {
        const auto place = static_cast<std::size_t>(letter - block.first);
        if (letter >= block.first && place < block.letters.size())
            return block.letters[place];
    }
    return '.';
}

void appendFoldedLetter(Text& target, wchar_t letter)
{
    if (isLeftOut(letter))
        return;
    const char base = baseOf(letter);
    if (base == '.') {
        target += lowerLetter(plainSign(letter));
        return;
    }
    const auto* const pair =
        std::find_if(std::begin(LetterPairs), std::end(LetterPairs), [&](const auto& p) { return p.first == base; });
    if (pair != std::end(LetterPairs))
        target += pair->second;
    else
        target += static_cast<wchar_t>(base);
}

// A folded text with the place of each letter in the original; behind them the original's length.
struct FoldedText {
    explicit FoldedText(TextView text)
    {
        for (std::size_t i = 0; i < text.size(); ++i) {
            appendFolded(letters, text.substr(i, 1));
            places.resize(letters.size(), i);
        }
        places.push_back(text.size());
    }

    // What folded letters were made of. Half of a pair stands for the whole letter.
    TextRange original(std::size_t start, std::size_t length) const
    {
        const std::size_t last = places[start + length - 1];
        std::size_t next = start + length;
        while (places[next] == last)
            ++next;
        return { places[start], places[next] - places[start] };
    }

    Text letters;
    std::vector<std::size_t> places;
};

std::vector<TextRange> joined(std::vector<TextRange> ranges)
{
    std::sort(ranges.begin(), ranges.end(), [](const TextRange& a, const TextRange& b) { return a.start < b.start; });
    std::vector<TextRange> result;
    for (const TextRange& range : ranges) {
        if (result.empty() || result.back().end() < range.start)
            result.push_back(range);
        else
            result.back().length = std::max(result.back().end(), range.end()) - result.back().start;
    }
    return result;
}

}

void appendFolded(Text& target, TextView text)
{
    for (const wchar_t letter : text) {
        if (static_cast<unsigned>(letter) < 128)
            target += lowerLetter(letter);
        else
            appendFoldedLetter(target, letter);
    }
}

Text folded(TextView text)
{
    Text result;
    appendFolded(result, text);
    return result;
}

std::vector<Text> foldedWords(TextView text)
{
    const Text letters = folded(text);
    std::vector<Text> words;
    std::size_t start = letters.find_first_not_of(L" \t\r\n");
    while (start != Text::npos) {
        const std::size_t end = std::min(letters.find_first_of(L" \t\r\n", start), letters.size());
        words.push_back(letters.substr(start, end - start));
        start = letters.find_first_not_of(L" \t\r\n", end);
    }
    return words;
}

std::vector<TextRange> occurrences(TextView text, const std::vector<Text>& words)
{
    std::vector<TextRange> ranges;
    const FoldedText searched(text);
    for (const Text& word : words) {
        if (word.empty())
            continue;
        for (std::size_t at = searched.letters.find(word); at != Text::npos; at = searched.letters.find(word, at + 1))
            ranges.push_back(searched.original(at, word.size()));
    }
    return joined(std::move(ranges));
}

}
