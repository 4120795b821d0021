// Digits; upper, lower and proper case for every letter of Unicode, independent of the process's locale.
#pragma once

#include "api/Text.h"

namespace health {

inline bool isDigit(wchar_t letter) { return letter >= L'0' && letter <= L'9'; }

wchar_t upperLetter(wchar_t letter);
wchar_t lowerLetter(wchar_t letter);

Text upperCase(TextView text);

// The two texts are equal except for the case of their letters.
bool equalIgnoringCase(TextView a, TextView b);

// Where words begin, in addition to the start of the text.
enum class WordStart {
    AfterBlank,
    AfterBlankOrComma,
};

// First letter of each word upper case, all others lower case: "NEEDS HELP" becomes "Needs Help",
// "NON-EMERGENT" "Non-emergent", "MCDONALD" "Mcdonald".
Text properCase(TextView text, WordStart wordStart = WordStart::AfterBlank);

// Appends the proper case of a text to another without a temporary copy.
void appendProperCase(Text& target, TextView text, WordStart wordStart);

}
