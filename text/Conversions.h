// Conversions between texts and numbers. Independent of the process's locale.
#pragma once

#include "api/Text.h"

#include <optional>

namespace health {

// The value of a text that is a number as a whole: optional blanks around it, an optional sign, digits with at most
// one ".", an optional exponent. Empty for everything else ("", "-", "2K", "2 3").
std::optional<double> numericValue(TextView text);

bool isNumeric(TextView text); // true if the text has such a value

// The number at the beginning of a text, after leading blanks; 0 if the text begins with no number. "-3abc" is -3.
double leadingNumber(TextView text);

// Rounds to a whole number, halves to the even neighbour; values out of range become the nearest bound.
long long roundToWhole(double value);

// A whole number as decimal text.
Text wholeText(long long value);

}
