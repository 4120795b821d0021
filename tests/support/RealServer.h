// The real server with its own data folder, and sessions with it.
#pragma once

#include "host/framework/ClinicalContext.h"
#include "host/session/ProcessTransport.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace health::test {

// The data folder that all tests of the program share; the first session creates it.
inline QString sharedDataFolder()
{
    static const QTemporaryDir folder;
    return folder.filePath("data");
}

// One session, signed on.
struct RealSession {
    explicit RealSession(const QString& folder = sharedDataFolder(), const Text& user = L"SORREL,ADA")
        : transport(QStringLiteral(SERVER_PROGRAM), { "--data", folder })
        , session(transport, 60000, [this](const QString& reason) {
            questions.append(reason);
            return retries-- > 0;
        })
    {
        session.usesHints = !qEnvironmentVariableIsSet("WITHOUT_HINTS");
        if (!user.empty())
            session.signOn(user);
    }

    // The server's process id.
    qint64 processId() { return static_cast<QProcess*>(transport.device())->processId(); }

    QStringList questions;
    int retries = 0;
    ProcessTransport transport;
    HostSession session;
};

// Raises an event in all sessions, as an administrator does.
inline int notify(const QString& event, const QString& folder = sharedDataFolder())
{
    return QProcess::execute(QStringLiteral(SERVER_PROGRAM), { "--data", folder, "--notify", event });
}

// Writes raw bytes and reads the output until the server ends.
inline QByteArray rawExchange(const QByteArray& bytes, const QString& data = sharedDataFolder())
{
    QProcess server;
    server.start(QStringLiteral(SERVER_PROGRAM), { "--data", data });
    server.write(bytes);
    server.closeWriteChannel();
    EXPECT_TRUE(server.waitForFinished(60000));
    return server.readAllStandardOutput();
}

inline QByteArray framed(const QByteArray& body)
{
    return QByteArray::number(body.size()).rightJustified(8, '0') + body;
}

// Runs the database check; its exit status.
inline int checkDatabase(const QString& folder)
{
    return QProcess::execute(QStringLiteral(SERVER_PROGRAM), { "--data", folder, "--check" });
}

// The names of the events that arrive.
struct EventNames : ICSS_SessionEvents {
    std::vector<Text> names;
    void EventCallback(TextView name, TextView) override { names.emplace_back(name); }
    void RPCCallback(long, TextView) override { }
    void RPCCallbackError(long, long, TextView) override { }
    // Waits until `count` names have arrived; the milliseconds that it took.
    qint64 waitFor(std::size_t count) const
    {
        QElapsedTimer waited;
        for (waited.start(); names.size() < count && waited.elapsed() < 5000;)
            QTest::qWait(1);
        return waited.elapsed();
    }
};

}
