// Identifiers made from names: the same name always has the same one.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace health {

// SHA-1 of some bytes. For names only: it protects nothing.
std::array<std::uint8_t, 20> sha1(std::string_view bytes);

// The UUID, version 5, of a name in a namespace, in lower case: "xxxxxxxx-xxxx-5xxx-yxxx-xxxxxxxxxxxx".
std::string nameUuid(const std::array<std::uint8_t, 16>& space, std::string_view name);

// The namespace of names that are URLs.
inline constexpr std::array<std::uint8_t, 16> UrlNamespace { 0x6b, 0xa7, 0xb8, 0x11, 0x9d, 0xad, 0x11, 0xd1, 0x80, 0xb4,
    0x00, 0xc0, 0x4f, 0xd4, 0x30, 0xc8 };

}
