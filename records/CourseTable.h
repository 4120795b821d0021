#pragma once

#include "api/Text.h"

#include <vector>

namespace health {

// What a picture of a course shows, in words: for screen readers, for the clipboard, and for exports.
struct CourseTable {
    Text title;
    std::vector<Text> headings; // one for each column
    std::vector<std::vector<Text>> rows; // each as long as `headings`; a missing value is empty
};

}
