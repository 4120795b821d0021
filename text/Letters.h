// Digits; upper, lower and proper case for every letter of Unicode, whatever the process's locale is.
#pragma once

#include "api/Text.h"

namespace health {

inline bool isDigit(wchar_t letter) { return letter >= L'0' && letter <= L'9'; }

wchar_t upperLetter(wchar_t letter);
wchar_t lowerLetter(wchar_t letter);

Text upperCase(TextView text);

// The two texts are equal when the case of their letters is left aside.
bool equalIgnoringCase(TextView a, TextView b);

// Where a word begins, besides at the start of the text and after a blank.
enum class WordStart {
    AfterBlank,
    AfterBlankOrComma,
};

// First letter of each word upper case, all others lower case: "NEEDS HELP" becomes "Needs Help",
// "NON-EMERGENT" "Non-emergent", "MCDONALD" "Mcdonald".
Text properCase(TextView text, WordStart wordStart = WordStart::AfterBlank);

// Appends the proper case of a text to another, without a text in between.
void appendProperCase(Text& target, TextView text, WordStart wordStart);

}
