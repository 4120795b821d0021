#include "host/session/FrameCodec.h"
#include "api/Failure.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

TEST(FrameCodec, RequestCountsBytesNotLetters)
{
    EXPECT_EQ(
        encodeRequest(7, L"MEVHOST PATIENTS", L"MUÑ").toStdString(), "00000023\x37\nMEVHOST PATIENTS\nMU\xC3\x91");
}

TEST(FrameCodec, AnswersComeInAnyPortions)
{
    const QByteArray bytes("00000006R12\nab00000011EVXR.1.X\n4200000005P50\nx00000004F3\n!");
    FrameReader reader;
    std::string seen;
    for (const char byte : bytes) {
        reader.feed(QByteArray(1, byte));
        while (const auto answer = reader.next())
            seen += std::to_string(static_cast<int>(answer->kind)) + '|' + std::to_string(answer->number) + '|'
                + answer->name.toStdString() + '|' + answer->text.toStdString() + ' ';
    }
    EXPECT_EQ(seen, "0|12||ab 2|0|VXR.1.X|42 3|50||x 1|3||! ");
    EXPECT_EQ(reader.pending(), 0);
}

TEST(FrameCodec, LongAnswerGoesBeforeTheNextHasCome)
{
    const QByteArray text(2'000'000, 'x');
    FrameReader reader;
    reader.feed("02000003R1\n" + text + "00000004R2");
    const auto first = reader.next();
    ASSERT_TRUE(first && first->text == text);
    EXPECT_EQ(reader.pending(), 10);
    EXPECT_FALSE(reader.next());
    reader.feed("\n!64000000");
    EXPECT_EQ(reader.next()->text, "!");
    EXPECT_FALSE(reader.next());
}

TEST(FrameCodec, WhatIsNoFrame)
{
    for (const char* bytes : { "0000000xR1\n", "-0000001R", "00000004Q12\n", "00000003R12", "00000004Rx1\n", "00000000",
             "00000002R\n", "64000001" }) {
        FrameReader reader;
        reader.feed(bytes);
        EXPECT_THROW(reader.next(), Failure) << bytes;
    }
}

}
}
