// Conversion between wide text and UTF-8.
#pragma once

#include "api/Text.h"

#include <cstdint>
#include <optional>

namespace health {

namespace detail {

inline constexpr wchar_t Replacement = 0xFFFD;

inline bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// The number of bytes in the sequence that this lead byte starts; 0 for any other byte.
inline std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    if (lead >= 0xF0 && lead < 0xF5)
        return 4;
    return 0;
}

inline bool isScalar(std::uint32_t point) { return point < 0xD800 || (point > 0xDFFF && point <= 0x10FFFF); }

// Decodes one sequence of `length` bytes; nullopt if it is truncated, overlong or a surrogate.
inline std::optional<std::uint32_t> decode(std::string_view bytes, std::size_t length)
{
    static constexpr std::uint32_t smallest[] = { 0, 0, 0x80, 0x800, 0x10000 };
    if (length == 0 || length > bytes.size())
        return std::nullopt;
    std::uint32_t point = static_cast<unsigned char>(bytes[0]) & (length == 1 ? 0x7F : 0xFF >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(static_cast<unsigned char>(bytes[i])))
            return std::nullopt;
        point = point << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3F);
    }
    return point >= smallest[length] && isScalar(point) ? std::optional(point) : std::nullopt;
}

}

// UTF-8 to wide text. Each byte that is not part of valid UTF-8 becomes U+FFFD. For text from outside the program,
// such as the what() of a standard exception.
inline Text widen(std::string_view utf8)
{
    Text text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::size_t length = detail::sequenceLength(static_cast<unsigned char>(utf8.front()));
        const auto point = detail::decode(utf8, length);
        text.push_back(point ? static_cast<wchar_t>(*point) : detail::Replacement);
        utf8.remove_prefix(point ? length : 1);
    }
    return text;
}

// Wide text to UTF-8. A code point that UTF-8 cannot encode becomes U+FFFD.
inline std::string narrow(TextView text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (const wchar_t letter : text) {
        auto point = static_cast<std::uint32_t>(letter);
        if (!detail::isScalar(point))
            point = detail::Replacement;
        if (point < 0x80) {
            utf8.push_back(static_cast<char>(point));
            continue;
        }
        const int tail = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
        utf8.push_back(static_cast<char>((0xF00u >> (tail + 1) & 0xFF) | point >> (6 * tail)));
        for (int i = tail - 1; i >= 0; --i)
            utf8.push_back(static_cast<char>(0x80 | (point >> (6 * i) & 0x3F)));
    }
    return utf8;
}

}
