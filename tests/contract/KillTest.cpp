// Nothing is lost and nothing is done twice, though servers are killed while twenty sessions save. A server killed
// while it writes the journal out makes the others wait a minute for its lock: the engine gives it up only then.
#include "tests/support/RealServer.h"
#include "text/Conversions.h"
#include "text/Pieces.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <signal.h>

namespace health::test {
namespace {

constexpr int Sessions = 20;
constexpr int Kills = 100;
constexpr unsigned Seed = 20261121;

// The server processes of these savers.
std::vector<pid_t> serversOf(const std::vector<std::unique_ptr<QProcess>>& savers)
{
    std::vector<pid_t> servers;
    for (const auto& saver : savers) {
        QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(saver->processId()));
        if (!children.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& child : children.readAll().split(' ')) {
            if (child.trimmed().toInt() > 0)
                servers.push_back(child.trimmed().toInt());
        }
    }
    return servers;
}

TEST(Kills, AcknowledgedSavesAreThereOnce)
{
    const QTemporaryDir folder;
    const QString data = folder.filePath("data");
    auto keeper = std::make_unique<RealSession>(data); // the database is made, and stays open as on a busy day
    std::vector<std::unique_ptr<QProcess>> savers;
    for (int i = 0; i < Sessions; ++i) {
        savers.push_back(std::make_unique<QProcess>());
        savers.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        savers.back()->start(
            QStringLiteral(SAVER_PROGRAM), { QStringLiteral(SERVER_PROGRAM), data, QStringLiteral("S%1").arg(i) });
        ASSERT_TRUE(savers.back()->waitForStarted());
    }
    for (const auto& saver : savers)
        ASSERT_TRUE(saver->bytesAvailable() > 0 || saver->waitForReadyRead(60000)); // its first save is acknowledged
    std::mt19937 random(Seed);
    QElapsedTimer started;
    started.start();
    int kills = 0;
    while (kills < Kills && started.elapsed() < 60000) {
        QThread::msleep(20 + random() % 60);
        const auto servers = serversOf(savers);
        if (!servers.empty() && ::kill(servers[random() % servers.size()], SIGKILL) == 0)
            ++kills;
    }
    EXPECT_EQ(kills, Kills);
    std::printf("%d servers killed in %.1f s\n", kills, static_cast<double>(started.elapsed()) / 1000);

    std::map<Text, int> acknowledged;
    for (const auto& saver : savers) {
        saver->closeWriteChannel();
        ASSERT_TRUE(saver->waitForFinished(200000));
        EXPECT_EQ(saver->exitCode(), 0);
        int saved = 0;
        for (const QByteArray& line : saver->readAllStandardOutput().split('\n')) {
            if (line.isEmpty())
                continue;
            EXPECT_TRUE(line.startsWith("1 ")) << line.toStdString();
            ++acknowledged[QString::fromUtf8(line.mid(2)).toStdWString()];
            ++saved;
        }
        EXPECT_GT(saved, 0);
    }
    std::map<Text, int> filed;
    const Text refusals = keeper->session.callList(L"MEVREF GET", L"14");
    for (const TextView line : replyLines(refusals))
        ++filed[Piece(line, L"^", 12)];
    EXPECT_EQ(filed, acknowledged); // none is missing, none is there twice, none came from nowhere
    std::printf("%zu saves acknowledged\n", acknowledged.size());
    // Blocks that killed sessions did not give back come back when the last session has gone, and a new one looks.
    keeper.reset();
    EXPECT_EQ(checkDatabase(data), 0);
}

}
}
