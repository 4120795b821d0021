// Conversions between texts and numbers, the same on every machine: nothing here depends on the
// process's locale.
#pragma once

#include "api/Text.h"

#include <optional>

namespace health {

// The value of a text that is a number as a whole: blanks around it, one sign, digits with at most
// one ".", an exponent. Empty for everything else ("", "-", "2K", "2 3").
std::optional<double> numericValue(TextView text);

inline bool isNumeric(TextView text) { return numericValue(text).has_value(); }

// The number at the beginning of a text, after leading blanks; 0 when there is none. "-3abc" gives -3.
double leadingNumber(TextView text);

// Rounds to a whole number, halves to the even neighbour; values out of range give the nearest bound.
long long roundToWhole(double value);

// A whole number as decimal text.
Text wholeText(long long value);

}
