// Shared by the fuzz targets: inputs that can be read and written by hand, and properties that must hold.
#pragma once

#include "api/Utf8.h"
#include "text/Letters.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace health::fuzz {

// An input as texts separated by form feeds. Bytes that are not UTF-8 become U+FFFD, as in the session.
class Sections {
public:
    Sections(const std::uint8_t* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size)
    {
    }

    // The next section's bytes; empty after the last.
    std::string_view nextBytes()
    {
        const std::size_t end = m_rest.find('\f');
        const std::string_view section = m_rest.substr(0, end);
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        return section;
    }

    Text next() { return widen(nextBytes()); }

    // A number from 0 to `count` - 1: the next section's first byte, "0" to "9", then "a" on for 10 and more.
    int nextChoice(int count)
    {
        const std::string_view section = nextBytes();
        if (section.empty())
            return 0;
        const int letter = static_cast<unsigned char>(section.front());
        return (letter >= 'a' ? letter - 'a' + 10 : letter >= '0' ? letter - '0' : letter) % count;
    }

private:
    std::string_view m_rest;
};

// The letters without their case, including those that have only one case mapping.
inline Text folded(TextView text)
{
    Text result(text);
    for (wchar_t& letter : result)
        letter = lowerLetter(upperLetter(lowerLetter(letter)));
    return result;
}

// A violation ends the run, so that the fuzzer keeps the input.
inline void require(bool holds, const char* property, TextView about = {})
{
    if (holds)
        return;
    std::fprintf(stderr, "VIOLATED: %s\n%s\n", property, narrow(about).c_str());
    std::abort();
}

}
