// Sentences and numbers in the lines that forms show beside and below their fields.
#pragma once

#include "platform/Explanation.h"
#include "platform/controls/Control.h"

#include <initializer_list>

namespace health {

// A text between quotation marks.
Text quoted(TextView text);
// The shortest decimal text of a number: 3.2, 3232.
Text numberText(double value);
// A whole number that is not negative, with commas between its groups of three digits.
Text groupedText(long long value);

// An explanation beside a field, and one below it.
Explanation besideField(TextView text, Tone tone = Tone::Quiet);
Explanation belowField(TextView text);

// "was 38", if a stored value differs from the present one (letter case does not count); otherwise empty.
Text wasText(TextView stored, TextView now);

// "30 of 200 characters", a warning in the last tenth and an error beyond the limit.
Explanation lengthOf(TextView text, std::size_t longest);
// The same, but empty while the text is far from the limit.
Explanation lengthIfClose(TextView text, std::size_t longest);

// Words of a refusal, and the field that they are about.
struct FieldWords {
    TextView words;
    Control* field;
};
// The field of the first words that the sentence contains; null if it contains none of them.
Control* fieldNamedIn(TextView sentence, std::initializer_list<FieldWords> table);

}
