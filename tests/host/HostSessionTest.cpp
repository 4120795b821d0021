#include "host/session/HostSession.h"
#include "api/Events.h"
#include "tests/support/EventNames.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/ScriptedTransport.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace health::test {
namespace {

class HostSessionTest : public testing::Test {
protected:
    HostSessionTest()
    {
        transport.answer = [this](const Request& request) {
            seen.push_back(request);
            if (request.name == u"MEVHOST SIGNON")
                return ScriptedTransport::reply(request, "71^SORREL,ADA^5^WILLOW CREEK");
            return onCall ? onCall(request) : ScriptedTransport::reply(request, "1");
        };
        session.signOn(L"SORREL,ADA");
    }

    // The names of all requests.
    QStringList names() const
    {
        QStringList list;
        for (const Request& request : seen)
            list.append(request.name);
        return list;
    }

    // The reply of a call, or what it fails with.
    Text outcome(TextView name, TextView parameter)
    {
        try {
            return session.callList(name, parameter);
        } catch (const Failure& failure) {
            return L"failed: " + failure.description();
        }
    }

    ScriptedTransport transport;
    std::function<QByteArray(const Request&)> onCall;
    std::vector<Request> seen;
    QStringList questions;
    int retries = 0; // answered yes so many times
    std::function<void()> onQuestion;
    HostSession session { transport, 300, [this](const QString& reason) {
                             questions.append(reason);
                             if (onQuestion)
                                 onQuestion();
                             return retries-- > 0;
                         } };
};

TEST_F(HostSessionTest, SignsOn)
{
    EXPECT_EQ(names(), QStringList { "MEVHOST SIGNON" });
    EXPECT_EQ(seen[0].parameter.mid(32), "^SORREL,ADA^2"); // the session's name, who signs on, the protocol's version
    EXPECT_EQ(session.signedOn().userNumber, 71);
    EXPECT_EQ(session.signedOn().siteName, L"WILLOW CREEK");
}

TEST_F(HostSessionTest, LostAnswerIsAskedForAgainUnderItsNumber)
{
    EventNames sink { session, { L"VXR.12", L"REFRESH" } };
    seen.clear();
    retries = 1;
    onCall = [&](const Request& request) {
        if (request.connection > 1)
            return ScriptedTransport::reply(request, "done");
        transport.endsAfterAnswer = true;
        return QByteArray();
    };
    EXPECT_EQ(session.callText(L"MEVREP SET", L"12"), L"done");
    EXPECT_EQ(names(), (QStringList { "MEVREP SET", "MEVHOST SIGNON", "MEVHOST SUBSCRIBE", "MEVREP SET" }));
    EXPECT_EQ(seen[0].number, seen[3].number);
    EXPECT_EQ(questions.join(u'|'),
        "The server process has stopped. The change may or may not have been made. If you retry, it is made only "
        "once.");
    QTest::qWait(30);
    EXPECT_EQ(sink.names, std::vector<Text> { L"REFRESH" }); // events may have been missed meanwhile
}

TEST_F(HostSessionTest, ServerThatDiesAtAnyByteOfItsAnswer)
{
    const qsizetype whole = framed("R999\nG1P1^").size();
    for (qsizetype cut = 0; cut < whole; ++cut) {
        retries = 1;
        bool first = true;
        onCall = [&](const Request& request) {
            const QByteArray answer = ScriptedTransport::reply(request, "G1P1^");
            if (!std::exchange(first, false))
                return answer;
            transport.endsAfterAnswer = true;
            return answer.left(std::min(cut, answer.size() - 1));
        };
        EXPECT_EQ(session.callText(L"MEVREP GET", L"12"), L"G1P1^") << cut;
    }
    EXPECT_EQ(questions.size(), whole);
    EXPECT_EQ(questions.last(), "The server process has stopped. Its last reply was cut off.");
}

TEST_F(HostSessionTest, DeclinedRetryEndsTheWholeLoadAndTheNextOneStartsAfresh)
{
    onCall = [](const Request&) { return QByteArray("GARBAGE!"); };
    const Text why = L"failed: The server sent an invalid reply (missing length).";
    EXPECT_EQ(outcome(L"MEVREP GET", L"12"), why);
    onCall = nullptr;
    EXPECT_EQ(outcome(L"MEVVELD GET", L"12"), why);
    EventNames sink { session, {} };
    EXPECT_THROW(session.registerEvent(L"VXR.12", sink), CallAbandoned);
    EXPECT_EQ(transport.connections, 1);
    QTest::qWait(1);
    EXPECT_EQ(session.callText(L"MEVREP GET", L"12"), L"1");
    EXPECT_EQ(transport.connections, 2);
    EXPECT_EQ(questions.size(), 1);
    EXPECT_EQ(names().count("MEVHOST SUBSCRIBE"), 1); // sent after the reconnect
}

TEST_F(HostSessionTest, AbandonedChangeKeepsItsNumberUntilAnotherIsMade)
{
    struct Case {
        std::vector<Text> then; // calls after the abandoned one
        int refused; // connections
        bool keeps; // the last call has the number of the abandoned one
    };
    const Case cases[] = {
        { { L"MEVVTXC SET^5" }, 0, true }, { { L"MEVVTXC GET^5", L"MEVVTXC SET^5" }, 0, true },
        { { L"MEVVTXC SET^5", L"MEVVTXC SET^5" }, 1, true }, // the first repetition found no server
        { { L"MEVVTXC SET^6" }, 0, false }, { { L"MEVVTXC DEL^5" }, 0, false },
        { { L"MEVVTXC SET^6", L"MEVVTXC SET^5" }, 0, false },
        { { L"MEVVTXC SET^5", L"MEVVTXC SET^5" }, 0, false }, // settled by the first
    };
    for (const Case& row : cases) {
        session.signOn(L"SORREL,ADA");
        onCall = [&](const Request&) {
            transport.endsAfterAnswer = true;
            return QByteArray();
        };
        const Text end = L" The change may or may not have been made. Check the record before you enter it again.";
        EXPECT_EQ(outcome(L"MEVVTXC SET", L"5"), L"failed: The server process has stopped." + end);
        const long long abandoned = seen.back().number;
        onCall = nullptr;
        transport.refuseConnections = row.refused;
        for (const Text& call : row.then) {
            QTest::qWait(1);
            outcome(call.substr(0, 11), call.substr(12));
        }
        EXPECT_EQ(seen.back().number == abandoned, row.keeps) << narrow(row.then.back());
    }
}

// Each answer, what the call returns or fails with, and whether the user is asked to retry. # stands for the number.
TEST_F(HostSessionTest, SingleAnswers)
{
    const std::tuple<QByteArrayList, Text, bool> cases[] = {
        { { "R#\nMU\xD1OZ^\xC3\x89" }, L"MU\xFFFDOZ^É", false }, // invalid UTF-8 becomes a replacement character
        { { "F#\nNo such call." }, L"failed: No such call.", false }, // the server did answer
        { { "F0\nThe data folder cannot be written." }, L"failed: The data folder cannot be written.", true },
        { { "R#0\n1" }, L"failed: The server's reply belongs to another call.", true },
        { { "P50\nRecovering", "R#\n1" }, L"failed: The server sent an invalid reply (progress after an answer).",
            true },
        { {}, L"failed: The server did not answer within 0.3 seconds.", true },
    };
    QElapsedTimer time;
    time.start();
    for (const auto& [frames, result, asks] : cases) {
        onCall = [&frames = frames](const Request& request) {
            QByteArray answer;
            for (QByteArray body : frames)
                answer += framed(body.replace("#", QByteArray::number(request.number)));
            return answer;
        };
        questions.clear();
        EXPECT_EQ(outcome(L"MEVREP GET", L"12"), result);
        EXPECT_EQ(questions, asks ? QStringList { QString::fromStdWString(result.substr(8)) } : QStringList());
        QTest::qWait(1); // calls are possible again
    }
    EXPECT_LT(time.elapsed(), 3000);
}

// A server that reports progress faster than the host can show it.
TEST_F(HostSessionTest, EndlessProgressEndsAtTheLongestCallOrByTheUser)
{
    const QByteArray progress = framed("P0\nRecovering").repeated(10000);
    QElapsedTimer began;
    int turns = 0;
    int told = 0;
    int giveUpAt = 0;
    transport.answer = [&](const Request&) { return progress; };
    const auto failure = [&] {
        try {
            session.signOn(L"SORREL,ADA");
        } catch (const CallAbandoned& abandoned) {
            return abandoned.description();
        }
        return Text();
    };
    QObject::connect(&session, &HostSession::progressed, [&] {
        ++told;
        // A host without a limit fails this test instead of hanging in it.
        transport.stream().push(began.elapsed() < 5000 ? progress : QByteArray("GARBAGE!"));
    });
    session.onWait = [&](qint64) {
        if (++turns == giveUpAt)
            session.giveUp();
        return false;
    };
    session.setLongestCall(600);
    began.start();
    EXPECT_EQ(failure(), L"The server did not finish within 0.6 seconds.");
    EXPECT_EQ(questions, QStringList { "The server did not finish within 0.6 seconds." });
    EXPECT_TRUE(turns > 5 && told <= turns + 1) << turns << ' ' << told; // the window stays responsive

    QTest::qWait(1);
    turns = 0;
    giveUpAt = 3;
    EXPECT_EQ(failure(), L"You have stopped waiting for the server.");
    EXPECT_EQ(questions.size(), 1); // without a question
    EXPECT_EQ(turns, 3);
}

TEST_F(HostSessionTest, FloodOfEventsBecomesOneRefresh)
{
    EventNames sink { session, { L"REFRESH", L"VXR.12" } };
    onCall = [](const Request& request) {
        QByteArray answer;
        for (int i = 0; i < 5000; ++i)
            answer += framed("EVXR.12." + QByteArray::number(i) + "\n");
        return answer + ScriptedTransport::reply(request, "1");
    };
    QTimer others;
    int turns = 0; // of the event loop between deliveries
    QObject::connect(&others, &QTimer::timeout, [&, last = sink.names.size()]() mutable {
        turns += std::exchange(last, sink.names.size()) != sink.names.size();
    });
    others.start(1);
    sink.onEvent = [] { QThread::msleep(1); };
    session.callText(L"MEVREP GET", L"12");
    EXPECT_TRUE(QTest::qWaitFor([&] { return turns > 3; })); // the window stays responsive
    for (std::size_t before = 0; std::exchange(before, sink.names.size()) != sink.names.size();)
        QTest::qWait(200);
    EXPECT_LE(sink.names.size(), 1000u);
    EXPECT_EQ(sink.names.front(), L"REFRESH");
}

TEST_F(HostSessionTest, EventsArriveByNameAndNeverInsideACall)
{
    EventNames patient { session, { L"VXR.12", L"VXR.12" } };
    EventNames other { session, { L"VXR.1" } };
    onCall = [&](const Request& request) {
        return framed("EVXR.12.VELD\n") + framed("EVXR.12.VELD\n") + ScriptedTransport::reply(request, "1")
            + framed("EVXR.12.REP\n");
    };
    patient.onEvent = [&] { EXPECT_FALSE(session.isInCall()); };
    session.callText(L"MEVREP GET", L"12");
    EXPECT_TRUE(patient.names.empty());
    QTest::qWait(30);
    EXPECT_EQ(patient.names, (std::vector<Text> { L"VXR.12.VELD", L"VXR.12.REP" })); // each once
    EXPECT_TRUE(other.names.empty());
    EXPECT_EQ(names().count("MEVHOST SUBSCRIBE"), 2);

    transport.stream().push(framed("EVXR.1.X\n")); // while nobody waits
    QTest::qWait(30);
    EXPECT_EQ(other.names, std::vector<Text> { L"VXR.1.X" });

    patient.data.clear(); // another session's change never hides behind an own one
    transport.stream().push(framed("EVXR.12.REP\nOWN") + framed("EVXR.12.REP\n") + framed("EVXR.12.REP\nOWN"));
    QTest::qWait(30);
    EXPECT_EQ(patient.data, (std::vector<Text> { Text(OwnChange), L"" }));
}

TEST_F(HostSessionTest, EventsWaitWhileTheUserIsAskedToRetry)
{
    EventNames patient { session, { L"VXR.12" } };
    onCall = [&](const Request& request) {
        if (request.connection == 2)
            return ScriptedTransport::reply(request, "1");
        transport.endsAfterAnswer = true;
        return framed("EVXR.12.VELD\n");
    };
    retries = 1;
    onQuestion = [&] {
        session.raiseEvent(L"VXR.12.REP", L"");
        QTest::qWait(30); // as the box does
        EXPECT_TRUE(patient.names.empty());
    };
    session.callText(L"MEVREP GET", L"12");
    QTest::qWait(30);
    EXPECT_EQ(patient.names, (std::vector<Text> { L"VXR.12.VELD", L"VXR.12.REP" }));
}

TEST_F(HostSessionTest, SinksMayUnregisterDuringACallback)
{
    EventNames first { session, { L"REFRESH" } };
    EventNames second { session, { L"REFRESH" } };
    first.onEvent = [&] {
        session.unregisterEvent(L"REFRESH", first);
        session.unregisterEvent(L"REFRESH", second);
    };
    session.raiseEvent(L"REFRESH", L"");
    session.raiseEvent(L"REFRESH", L"");
    EXPECT_EQ(first.names.size(), 1u);
    EXPECT_TRUE(second.names.empty());
    EXPECT_EQ(names(), QStringList { "MEVHOST SIGNON" }); // local names never reach the server
}

TEST_F(HostSessionTest, ConnectionLostWhileIdleComesBackByItself)
{
    EventNames sink { session, { L"REFRESH", L"VXR.12" } };
    const QSignalSpy states(&session, &HostSession::connectionChanged);
    transport.end();
    QTest::qWait(30);
    EXPECT_EQ(transport.connections, 2);
    EXPECT_EQ(states, (QList<QVariantList> { { false }, { true } }));
    EXPECT_EQ(sink.names, std::vector<Text> { L"REFRESH" }); // events may have been missed
    EXPECT_TRUE(questions.isEmpty());
    EXPECT_EQ(names().last(), "MEVHOST SUBSCRIBE");
}

// Expected calls are sent together; each returns its own answer, as it would without the hint.
class ExpectedCalls : public HostSessionTest, public testing::WithParamInterface<bool> {
protected:
    ExpectedCalls()
    {
        session.usesHints = GetParam();
        session.signOn(L"SORREL,ADA");
        seen.clear();
    }

    static ExpectedCall list(TextView name, TextView parameter)
    {
        return { ExpectedCall::Form::Lines, Text(name), Text(parameter), ExpectedCall::Purpose::Editor };
    }
};

INSTANTIATE_TEST_SUITE_P(
    Hints, ExpectedCalls, testing::Bool(), [](const auto& row) { return row.param ? "on" : "off"; });

TEST_P(ExpectedCalls, GiveTheSameRepliesInTheirOrder)
{
    onCall = [](const Request& request) {
        if (request.name == u"B")
            return framed("F" + QByteArray::number(request.number) + "\nNo such call.");
        return ScriptedTransport::reply(request, request.name.toUtf8() + request.parameter.toUtf8());
    };
    session.expectCalls(std::array { list(L"A", L"12"), list(L"B", L"12"), list(L"C", L"12") });
    EXPECT_EQ(seen.size(), GetParam() ? 3u : 0u);
    EXPECT_EQ(outcome(L"A", L"12"), L"A12");
    QTest::qWait(1); // a message box between the calls runs the event loop: the other answers wait
    EXPECT_EQ(outcome(L"B", L"12"), L"failed: No such call.");
    EXPECT_EQ(outcome(L"C", L"12"), L"C12");
    session.expectCalls({});
    EXPECT_EQ(names(), (QStringList { "A", "B", "C" }));
    EXPECT_TRUE(questions.isEmpty());
}

TEST_P(ExpectedCalls, AnotherCallEndsTheHint)
{
    int asked = 0;
    onCall = [&](const Request& request) {
        return ScriptedTransport::reply(request, request.name.toUtf8() + QByteArray::number(++asked));
    };
    session.expectCalls(std::array { list(L"A", L""), list(L"B", L""), list(L"C", L"") });
    const Text before = outcome(L"A", L"");
    outcome(L"MEVREP SET", L"12"); // makes the other two answers outdated
    EXPECT_EQ(before, L"A1");
    EXPECT_EQ(outcome(L"B", L""), GetParam() ? L"B5" : L"B3");
    session.expectCalls(std::array { list(L"C", L"") });
    session.expectCalls({});
    EXPECT_EQ(outcome(L"C", L""), GetParam() ? L"C7" : L"C4"); // sent again after the hint has ended
    EXPECT_TRUE(questions.isEmpty());
}

TEST_P(ExpectedCalls, ServerThatDiesBetweenTheirAnswers)
{
    for (int whole = 0; whole < 4; ++whole) {
        retries = 1;
        int answers = 0;
        const int connection = transport.connections;
        onCall = [&](const Request& request) {
            const QByteArray answer = ScriptedTransport::reply(request, request.name.toUtf8());
            if (request.connection > connection || ++answers <= whole)
                return answer;
            transport.endsAfterAnswer = true;
            return answers == whole + 1 ? answer.left(9) : QByteArray();
        };
        session.expectCalls(std::array { list(L"A", L""), list(L"B", L""), list(L"C", L"") });
        for (const TextView name : { L"A", L"B", L"C" })
            EXPECT_EQ(outcome(name, L""), name) << whole;
        EXPECT_EQ(questions.size(), std::min(whole + 1, 3)) << whole;
    }
}

}
}
