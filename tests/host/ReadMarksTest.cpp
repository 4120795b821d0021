#include "host/session/ReadMarks.h"

#include <array>

#include <gtest/gtest.h>

namespace health::test {
namespace {

using Purpose = ExpectedCall::Purpose;

ExpectedCall call(TextView name, Purpose purpose)
{
    return { ExpectedCall::Form::OneText, Text(name), L"12", purpose };
}

TEST(ReadMarks, ChangeNamesTheRepliesThatFormsHold)
{
    ReadMarks marks;
    const auto change = [&] { return marks.purposeOf(L"A SET", L"12^x"); };
    const auto read = [&](TextView name) { return marks.purposeOf(name, L"12"); };
    EXPECT_EQ(change(), L""); // no purpose was announced
    marks.announce(std::array { call(L"A", Purpose::List), call(L"B", Purpose::Other) });
    EXPECT_EQ(read(L"A") + L"|" + read(L"B") + L"|" + read(L"C"), L"LIST||");
    EXPECT_EQ(change(), L"CHECK");

    marks.announce(std::array { call(L"A", Purpose::Editor), call(L"D", Purpose::Editor) });
    marks.announce({}); // the end of a hint changes nothing
    EXPECT_EQ(read(L"A"), L"EDIT");
    marks.noteReply(3, L"A", L"12");
    marks.noteReply(4, L"A", L"13");
    marks.noteReply(5, L"D", L"12");
    EXPECT_EQ(change(), L"CHECK 5 3");
    // A form that reloads holds nothing until its reply arrives.
    marks.announce(std::array { call(L"A", Purpose::Editor) });
    EXPECT_EQ(change(), L"CHECK 5");
    marks.noteReply(9, L"A", L"12");
    EXPECT_EQ(change(), L"CHECK 9 5");
    // A list that makes the same call does not change the marks of the form.
    marks.announce(std::array { call(L"A", Purpose::List) });
    marks.noteReply(10, L"A", L"12");
    EXPECT_EQ(change(), L"CHECK 9 5");
}

}
}
