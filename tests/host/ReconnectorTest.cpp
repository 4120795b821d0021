#include "host/session/Reconnector.h"
#include "api/Failure.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace health::test {
namespace {

TEST(Reconnector, PausesDoubleUntilTheConnectionIsOpen)
{
    Reconnector reconnector(50);
    QSignalSpy due(&reconnector, &Reconnector::due);
    const auto failedAttempt = [&] {
        QElapsedTimer pause;
        pause.start();
        EXPECT_FALSE(reconnector.attempt([] { throw Failure(L"No server."); }));
        EXPECT_FALSE(reconnector.attempt([] { ADD_FAILURE() << "attempt during a pause"; }));
        EXPECT_TRUE(due.wait(10'000));
        return pause.elapsed();
    };
    for (const int shortest : { 45, 90, 180, 360, 720 }) // timers may be 5 % early
        EXPECT_GE(failedAttempt(), shortest);
    reconnector.noteConnected();
    EXPECT_LT(failedAttempt(), 720);

    EXPECT_TRUE(reconnector.attempt([] {}));
    EXPECT_FALSE(reconnector.attempt([] { ADD_FAILURE() << "a server that stops again and again"; }));
}

TEST(Reconnector, TheUserMayEndThePause)
{
    Reconnector reconnector(60'000);
    QSignalSpy due(&reconnector, &Reconnector::due);
    EXPECT_EQ(reconnector.secondsLeft(), 0);
    EXPECT_FALSE(reconnector.attempt([] { throw Failure(L"No server."); }));
    EXPECT_NEAR(reconnector.secondsLeft(), 60, 4); // timers may be 5 % off
    reconnector.tryNow();
    EXPECT_EQ(due.count(), 1);
    EXPECT_EQ(reconnector.secondsLeft(), 0);
    int attempts = 0;
    EXPECT_TRUE(reconnector.attempt([&] { ++attempts; }));
    EXPECT_EQ(attempts, 1);
}

}
}
