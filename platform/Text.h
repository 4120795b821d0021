// The one kind of text that the logic works with.
#pragma once

#include <string>
#include <string_view>

namespace health {

using Text = std::wstring;
using TextView = std::wstring_view;

// UTF-8 to wide text; each byte that is no UTF-8 becomes U+FFFD. For texts that arrive from
// outside the logic, such as the what() of a standard exception.
Text widen(std::string_view utf8);

// Wide text to UTF-8; a code point that UTF-8 cannot carry becomes U+FFFD.
std::string narrow(TextView text);

}
