#include "records/Uuid.h"

#include <bit>

namespace health {

namespace {

constexpr std::size_t BlockBytes = 64;
using Digest = std::array<std::uint32_t, 5>;

// One round's function and constant.
std::uint32_t mixed(std::size_t round, std::uint32_t b, std::uint32_t c, std::uint32_t d)
{
    switch (round / 20) {
    case 0:
        return ((b & c) | (~b & d)) + 0x5A827999;
    case 1:
        return (b ^ c ^ d) + 0x6ED9EBA1;
    case 2:
        return ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC;
    default:
        return (b ^ c ^ d) + 0xCA62C1D6;
    }
}

void addBlock(Digest& digest, std::string_view block)
{
    std::array<std::uint32_t, 80> words {};
    for (std::size_t i = 0; i < BlockBytes; ++i)
        words[i / 4] = words[i / 4] << 8 | static_cast<std::uint8_t>(block[i]);
    for (std::size_t i = 16; i < words.size(); ++i)
        words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
    Digest turn = digest;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::uint32_t next = std::rotl(turn[0], 5) + mixed(i, turn[1], turn[2], turn[3]) + turn[4] + words[i];
        turn = { next, turn[0], std::rotl(turn[1], 30), turn[2], turn[3] };
    }
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] += turn[i];
}

}

std::array<std::uint8_t, 20> sha1(std::string_view bytes)
{
    std::string padded(bytes);
    padded += '\x80';
    while (padded.size() % BlockBytes != BlockBytes - 8)
        padded += '\0';
    for (int shift = 56; shift >= 0; shift -= 8)
        padded += static_cast<char>(static_cast<std::uint64_t>(bytes.size()) * 8 >> shift & 0xFF);
    Digest digest { 0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0 };
    for (std::string_view rest = padded; !rest.empty(); rest.remove_prefix(BlockBytes))
        addBlock(digest, rest);
    std::array<std::uint8_t, 20> result {};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<std::uint8_t>(digest[i / 4] >> (24 - i % 4 * 8));
    return result;
}

std::string nameUuid(const std::array<std::uint8_t, 16>& space, std::string_view name)
{
    static constexpr std::string_view hex = "0123456789abcdef";
    std::array<std::uint8_t, 20> hash = sha1(std::string(space.begin(), space.end()).append(name));
    hash[6] = static_cast<std::uint8_t>((hash[6] & 0x0F) | 0x50); // version 5
    hash[8] = static_cast<std::uint8_t>((hash[8] & 0x3F) | 0x80);
    std::string uuid;
    for (std::size_t i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            uuid += '-';
        uuid += hex[hash[i] >> 4];
        uuid += hex[hash[i] & 0xF];
    }
    return uuid;
}

}
