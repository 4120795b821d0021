#include "text/Letters.h"

#include <algorithm>
#include <locale>
#include <stdexcept>

namespace health {

namespace {

// Independent of the locale that the process has set.
const std::ctype<wchar_t>& unicodeLetters()
{
    static const std::locale locale = [] {
        try {
            return std::locale("C.UTF-8");
        } catch (const std::runtime_error&) {
            return std::locale::classic();
        }
    }();
    static const auto& letters = std::use_facet<std::ctype<wchar_t>>(locale);
    return letters;
}

bool isAscii(wchar_t letter) { return static_cast<unsigned>(letter) < 128; }

void lowerInPlace(wchar_t* text, std::size_t length)
{
    unsigned seen = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const auto letter = static_cast<unsigned>(text[i]);
        seen |= letter;
        text[i] = static_cast<wchar_t>(letter - L'A' < 26u ? letter + 32u : letter);
    }
    if (seen < 128)
        return;
    for (std::size_t i = 0; i < length; ++i) {
        if (!isAscii(text[i]))
            text[i] = lowerLetter(text[i]);
    }
}

}

wchar_t upperLetter(wchar_t letter)
{
    if (isAscii(letter))
        return letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - 32) : letter;
    return unicodeLetters().toupper(letter);
}

wchar_t lowerLetter(wchar_t letter)
{
    if (isAscii(letter))
        return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter + 32) : letter;
    return unicodeLetters().tolower(letter);
}

Text upperCase(TextView text)
{
    Text result(text);
    std::transform(result.begin(), result.end(), result.begin(), upperLetter);
    return result;
}

bool equalIgnoringCase(TextView a, TextView b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](wchar_t x, wchar_t y) { return x == y || lowerLetter(x) == lowerLetter(y); });
}

Text properCase(TextView text, WordStart wordStart)
{
    Text result;
    appendProperCase(result, text, wordStart);
    return result;
}

void appendProperCase(Text& target, TextView text, WordStart wordStart)
{
    const std::size_t start = target.size();
    target.append(text);
    wchar_t* const words = target.data() + start;
    lowerInPlace(words, text.size());
    bool wordBegins = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (wordBegins)
            words[i] = upperLetter(words[i]);
        wordBegins = words[i] == L' ' || (words[i] == L',' && wordStart == WordStart::AfterBlankOrComma);
    }
}

}
