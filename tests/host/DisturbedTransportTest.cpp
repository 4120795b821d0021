#include "host/session/DisturbedTransport.h"
#include "host/session/HostSession.h"
#include "host/windows/LaboratoryWindow.h"
#include "tests/support/EventNames.h"
#include "tests/support/ScriptedTransport.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

namespace health::test {
namespace {

using namespace Qt::StringLiterals;

// A session whose transport is disturbed, with a scripted server.
class Disturbed : public testing::Test {
protected:
    Disturbed()
    {
        server->answer = [this](const Request& request) {
            seen.push_back(request);
            if (request.name == u"MEVHOST SIGNON")
                return ScriptedTransport::reply(request, "71^SORREL,ADA^5^WILLOW CREEK");
            return onCall ? onCall(request) : ScriptedTransport::reply(request, request.name.toUtf8());
        };
        session.signOn(L"SORREL,ADA");
        seen.clear();
    }

    // The reply of a call, or what it fails with.
    Text outcome(TextView name)
    {
        try {
            return session.callText(name, L"12");
        } catch (const Failure& failure) {
            QTest::qWait(1); // a declined retry ends with the turn of the event loop
            return L"failed: " + failure.description();
        }
    }
    QStringList names() const
    {
        QStringList names;
        for (const Request& request : seen)
            names.append(request.name);
        return names;
    }

    ScriptedTransport* server = new ScriptedTransport;
    DisturbedTransport transport { std::unique_ptr<Transport>(server) };
    std::function<QByteArray(const Request&)> onCall;
    std::vector<Request> seen;
    int retries = 0;
    HostSession session { transport, 1000, [this](const QString&) { return retries-- > 0; } };
    Disturbances disturbances;
};

TEST_F(Disturbed, DelaysEachAnswerButNotOneBehindTheOther)
{
    disturbances.delay = 80;
    transport.disturb(disturbances);
    QElapsedTimer clock;
    clock.start();
    const ExpectedCall calls[] { { ExpectedCall::Form::OneText, L"A", L"12" },
        { ExpectedCall::Form::OneText, L"B", L"12" }, { ExpectedCall::Form::OneText, L"C", L"12" } };
    session.expectCalls(calls);
    EXPECT_EQ(outcome(L"A"), L"A");
    EXPECT_GE(clock.elapsed(), 80);
    EXPECT_EQ(outcome(L"B"), L"B");
    EXPECT_EQ(outcome(L"C"), L"C");
    EXPECT_LT(clock.elapsed(), 160);
    transport.disturb({});
    clock.restart();
    EXPECT_EQ(outcome(L"A"), L"A");
    EXPECT_LT(clock.elapsed(), 80);
}

TEST_F(Disturbed, LosesTheConnectionAfterTheServerHasReceivedTheCall)
{
    disturbances.loseEvery = 2;
    transport.disturb(disturbances);
    EXPECT_EQ(outcome(L"MEVREP GET"), L"MEVREP GET");
    retries = 1;
    EXPECT_EQ(outcome(L"MEVREP SET"), L"MEVREP SET");
    EXPECT_EQ(names(), (QStringList { "MEVREP GET", "MEVREP SET", "MEVHOST SIGNON", "MEVREP SET" }));
    EXPECT_EQ(seen[1].number, seen[3].number);

    seen.clear();
    disturbances = {};
    disturbances.losesNextSave = true;
    transport.disturb(disturbances);
    retries = 1;
    EXPECT_EQ(outcome(L"MEVREP GET"), L"MEVREP GET");
    EXPECT_EQ(outcome(L"MEVREP SET"), L"MEVREP SET");
    EXPECT_EQ(names(), (QStringList { "MEVREP GET", "MEVREP SET", "MEVHOST SIGNON", "MEVREP SET" }));

    const QSignalSpy states(&session, &HostSession::connectionChanged);
    transport.disturb({});
    transport.loseConnection();
    QTest::qWait(30);
    EXPECT_EQ(states, (QList<QVariantList> { { false }, { true } })); // back without a question
}

TEST_F(Disturbed, GarblesRepliesOnceOrAlways)
{
    for (const bool always : { false, true }) {
        disturbances.garbled = always ? Disturbances::Garbled::EveryReply : Disturbances::Garbled::NextReply;
        transport.disturb(disturbances);
        EXPECT_EQ(outcome(L"A"), L"failed: The server sent an invalid reply (missing length).");
        EXPECT_EQ(outcome(L"A").starts_with(L"failed"), always);
    }
}

TEST_F(Disturbed, RefusesWithoutReachingTheServer)
{
    const Text refusal = L"-1^The laboratory has refused this call.";
    disturbances.refused = Disturbances::Refused::NextSave;
    transport.disturb(disturbances);
    EXPECT_EQ(outcome(L"MEVREP GET"), L"MEVREP GET");
    EXPECT_EQ(outcome(L"MEVREP SET"), refusal);
    EXPECT_EQ(outcome(L"MEVREP SET"), L"MEVREP SET");
    EXPECT_EQ(names(), (QStringList { "MEVREP GET", "MEVREP SET" }));

    disturbances.refused = Disturbances::Refused::EveryCall;
    transport.disturb(disturbances);
    EXPECT_EQ(outcome(L"MEVREP GET"), refusal);
    EXPECT_EQ(outcome(L"MEVREP SET"), refusal);
    session.signOn(L"SORREL,ADA"); // is the host's own
    EXPECT_EQ(session.signedOn().userNumber, 71);
}

TEST_F(Disturbed, StormRaisesSubscribedEventsUntilItIsOver)
{
    EventNames sink { session, { L"VXR.12" } };
    disturbances.eventsPerSecond = 200;
    transport.disturb(disturbances);
    EXPECT_TRUE(QTest::qWaitFor([&] { return sink.names.size() > 3; }));
    EXPECT_EQ(sink.names.front(), L"VXR.12.LAB");
    EXPECT_EQ(outcome(L"A"), L"A"); // calls go on
    transport.disturb({});
    QTest::qWait(50);
    const std::size_t before = sink.names.size();
    QTest::qWait(50);
    EXPECT_EQ(sink.names.size(), before);
}

TEST_F(Disturbed, StoppedServerComesBackWithNormal)
{
    disturbances.isStopped = true;
    transport.disturb(disturbances);
    EXPECT_EQ(outcome(L"A"), L"failed: The laboratory has stopped the server.");
    EXPECT_EQ(names(), QStringList());
    transport.disturb({});
    EXPECT_EQ(outcome(L"A"), L"A");
}

TEST_F(Disturbed, BytesThatAreNoFramesPassUnchanged)
{
    onCall = [](const Request&) { return QByteArray("GARBAGE!"); };
    EXPECT_EQ(outcome(L"A"), L"failed: The server sent an invalid reply (missing length).");
    onCall = [this](const Request& request) {
        server->endsAfterAnswer = true;
        return ScriptedTransport::reply(request, "").left(9);
    };
    EXPECT_EQ(outcome(L"A"), L"failed: The server process has stopped.");
}

TEST_F(Disturbed, WindowShowsTheStateAndNormalSwitchesAllOff)
{
    LaboratoryWindow window(transport, nullptr);
    const auto numbers = window.findChildren<QSpinBox*>();
    const auto choices = window.findChildren<QComboBox*>();
    const auto state = [&] { return window.findChildren<QLabel*>().last()->text(); };
    EXPECT_EQ(state(), "State: normal.");
    numbers[0]->setValue(300);
    numbers[1]->setValue(1);
    choices[1]->setCurrentIndex(1);
    EXPECT_EQ(state(), "State: answers delayed by 300 ms, connection lost at every call, next save refused.");
    numbers[1]->setValue(0);
    EXPECT_EQ(outcome(L"MEVREP SET"), L"-1^The laboratory has refused this call.");
    EXPECT_TRUE(QTest::qWaitFor([&] { return choices[1]->currentIndex() == 0; })); // it happens once
    EXPECT_EQ(state(), "State: answers delayed by 300 ms.");
    for (QPushButton* const button : window.findChildren<QPushButton*>()) {
        if (button->text() == u"&Normal")
            button->click();
    }
    EXPECT_EQ(state(), "State: normal.");
    EXPECT_EQ(numbers[0]->value(), 0);
    EXPECT_EQ(transport.disturbances(), Disturbances());
}

}
}
