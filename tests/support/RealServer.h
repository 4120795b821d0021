// The real server on a folder of its own, and sessions with it.
#pragma once

#include "host/ClinicalContext.h"
#include "host/ProcessTransport.h"

#include <QProcess>
#include <QTemporaryDir>

namespace health::test {

// The server's data folder, shared by all tests of the program: made by the first session.
inline QString sharedDataFolder()
{
    static const QTemporaryDir folder;
    return folder.filePath(QStringLiteral("data"));
}

// One session, signed on.
struct RealSession {
    explicit RealSession(const QString& folder = sharedDataFolder(), const Text& user = L"SORREL,ADA")
        : transport(QStringLiteral(SERVER_PROGRAM), { QStringLiteral("--data"), folder })
        , session(transport, 60000, [this](const QString& reason) {
            questions.append(reason);
            return retries-- > 0;
        })
    {
        // The same tests run with and without hints.
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
    return QProcess::execute(
        QStringLiteral(SERVER_PROGRAM), { QStringLiteral("--data"), folder, QStringLiteral("--notify"), event });
}

}
