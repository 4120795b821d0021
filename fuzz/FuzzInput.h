// What the fuzz targets share: inputs that can be read and written by hand, and properties that must hold.
#pragma once

#include "api/Utf8.h"
#include "text/Letters.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace health::fuzz {

// An input as texts parted by form feeds. Bytes that are no UTF-8 become U+FFFD, as in the session.
class Sections {
public:
    Sections(const std::uint8_t* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size)
    {
    }

    // The next section's bytes; empty when there are no more.
    std::string_view nextBytes()
    {
        const std::size_t end = m_rest.find('\f');
        const std::string_view section = m_rest.substr(0, end);
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        return section;
    }

    Text next() { return widen(nextBytes()); }

    // A number from 0 to `count` - 1 by the next section's first byte, so that "0" to "9" and "a" on mean what they
    // say.
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

// Letters without their case, also those of which only one case has a partner.
inline Text folded(TextView text)
{
    Text result(text);
    for (wchar_t& letter : result)
        letter = lowerLetter(upperLetter(lowerLetter(letter)));
    return result;
}

// Ends the run, which makes the fuzzer keep the input.
inline void require(bool holds, const char* property, TextView about = {})
{
    if (holds)
        return;
    std::fprintf(stderr, "VIOLATED: %s\n%s\n", property, narrow(about).c_str());
    std::abort();
}

}
