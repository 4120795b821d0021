// The SHA-256 digest for the M engine, which has none: the audit's entries are chained by it (routines/MEVAUDIT.m).
// Linked from the static libcrypto by its three plain functions: the shared one would cost each session 0.7 MB of
// memory.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/sha.h>

#include <array>
#include <cstddef>

namespace {

// How the engine passes a string to a call of the table digest.xc.
struct EngineString {
    long length;
    char* address;
};

}

// Writes 64 hexadecimal digits and a final zero; any other result than 0 is an error of the M call.
extern "C" [[gnu::visibility("default")]] int sha256(int, const EngineString* text, char* digits)
{
    std::array<unsigned char, SHA256_DIGEST_LENGTH> digest;
    SHA256_CTX context;
    if (SHA256_Init(&context) != 1
        || SHA256_Update(&context, text->address, static_cast<std::size_t>(text->length)) != 1
        || SHA256_Final(digest.data(), &context) != 1)
        return 1;
    for (const unsigned char byte : digest) {
        *digits++ = "0123456789abcdef"[byte >> 4];
        *digits++ = "0123456789abcdef"[byte & 15];
    }
    *digits = 0;
    return 0;
}
