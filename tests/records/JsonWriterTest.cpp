#include "records/JsonWriter.h"

#include "records/Uuid.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

TEST(JsonWriter, LeavesOutWhatIsEmpty)
{
    JsonWriter json;
    json.beginObject();
    json.object("none", [&] { json.array("inside", [] {}); });
    json.array("list", [&] {
        json.object("", [&] { json.text("text", L""); });
        json.object("", [&] { json.whole("number", -3); });
        json.array("", [&] { json.array("", [&] { json.boolean("", false); }); });
        json.text("", L"last");
    });
    json.number("decimal", L"3.20");
    json.object("end", [] {});
    json.end();
    EXPECT_EQ(json.bytes(), R"({"list":[{"number":-3},[[false]],"last"],"decimal":3.20})");
}

TEST(JsonWriter, EscapesEveryText)
{
    JsonWriter json;
    json.object("", [&] { json.text("a", L"\"\\\n\r\t\x01{[,é\U0001F600\xD800"); });
    EXPECT_EQ(json.bytes(), "{\"a\":\"\\\"\\\\\\u000a\\u000d\\u0009\\u0001{[,é\U0001F600\uFFFD\"}");
}

// Known answers: FIPS 180 and RFC 9562.
TEST(Uuid, IsThatOfItsName)
{
    const auto hex = [](std::string_view bytes) {
        std::string text;
        for (const std::uint8_t byte : sha1(bytes)) {
            char digits[3];
            std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(byte));
            text += digits;
        }
        return text;
    };
    EXPECT_EQ(hex(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
    EXPECT_EQ(hex("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(
        hex("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"), "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
    EXPECT_EQ(hex(std::string(1000000, 'a')), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
    constexpr std::array<std::uint8_t, 16> dns { 0x6b, 0xa7, 0xb8, 0x10, 0x9d, 0xad, 0x11, 0xd1, 0x80, 0xb4, 0x00, 0xc0,
        0x4f, 0xd4, 0x30, 0xc8 };
    EXPECT_EQ(nameUuid(dns, "www.example.com"), "2ed6657d-e927-568b-95e1-2665a8aea6a2");
}

}
}
