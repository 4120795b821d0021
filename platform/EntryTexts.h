#pragma once

#include "api/Text.h"

#include <vector>

namespace health {

class Form;

// A field of a form in words.
struct EntryText {
    Text caption; // without "&"
    Text text; // the chosen option, the checked rows, "Yes" or "No", or the text; empty if there is no entry

    bool operator==(const EntryText&) const = default;
};

// The fields of a form, in the order of its arrangement. The same class of forms always has the same captions.
std::vector<EntryText> entryTexts(Form& form);

}
