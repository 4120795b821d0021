// The text type of the panel and of its hosts.
#pragma once

#include <string>
#include <string_view>

namespace health {

// One element per code point.
using Text = std::wstring;
using TextView = std::wstring_view;

static_assert(sizeof(wchar_t) == 4, "A wide character must hold any code point, as it does on Linux.");

}
