// The real server with its own data folder, and sessions with it.
#pragma once

#include "host/framework/ClinicalContext.h"
#include "host/session/ProcessTransport.h"
#include "tests/support/ScriptedTransport.h"

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

// One session, and the questions whether to retry.
template<typename Kind>
struct AnySession {
    template<typename... Arguments>
    explicit AnySession(Arguments... arguments)
        : transport(arguments...)
        , session(transport, 60000, [this](const QString& reason) {
            questions.append(reason);
            if (beforeRetry)
                beforeRetry();
            return retries-- > 0;
        })
    {
    }
    // The questions so far, one line each.
    std::string asked() const { return questions.join(u'\n').toStdString(); }

    QStringList questions;
    int retries = 0; // answered yes so many times
    std::function<void()> beforeRetry;
    Kind transport;
    HostSession session;
};

// With a server of its own, signed on.
struct RealSession : AnySession<ProcessTransport> {
    explicit RealSession(const QString& folder = sharedDataFolder(), const Text& user = L"SORREL,ADA")
        : AnySession(QStringLiteral(SERVER_PROGRAM), QStringList { "--data", folder })
    {
        session.usesHints = !qEnvironmentVariableIsSet("WITHOUT_HINTS");
        session.signOn(user);
    }

    // The server's process id.
    qint64 processId() { return static_cast<QProcess*>(transport.device())->processId(); }
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

}
