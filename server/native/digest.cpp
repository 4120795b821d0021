// SHA-256 for the M engine, which has no digest; the audit chains its entries with it (routines/MEVAUDIT.m). It links
// three functions of the static libcrypto, because the shared library would cost each session 0.7 MB of memory.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/sha.h>

#include <array>
#include <cstddef>

namespace {

// A string argument of a call in the table digest.xc.
struct EngineString {
    long length;
    char* address;
};

}

// Writes 64 hexadecimal digits and a terminating zero. A result other than 0 raises an M error.
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
