// Texts as a search compares them: without case and accents.
#pragma once

#include "api/Text.h"

#include <vector>

namespace health {

// Letters of a text.
struct TextRange {
    std::size_t start = 0;
    std::size_t length = 0;

    std::size_t end() const { return start + length; }
    bool operator==(const TextRange&) const = default;
};

// Appends the text in lower case, Latin letters without their accents, ligatures and sharp s as two letters, combining
// marks and soft hyphens left out, curved apostrophes and special blanks and hyphens as the plain ones. "Łukasz Müß"
// becomes "lukasz muss".
void appendFolded(Text& target, TextView text);
Text folded(TextView text);

// The folded words of a text; blanks separate them.
std::vector<Text> foldedWords(TextView text);

// Where the words of foldedWords() occur in a text that is not folded, in ascending order; ranges that touch or overlap
// are one. A letter is in a range as a whole, with its combining marks.
std::vector<TextRange> occurrences(TextView text, const std::vector<Text>& words);

}
