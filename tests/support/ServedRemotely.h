// The real server behind stunnel, with a test authority, and a relay that can lose what passes through it.
#pragma once

#include "host/TlsTransport.h"
#include "tests/support/RealServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <atomic>
#include <thread>

#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

namespace health::test {

inline int freePort(const QHostAddress& address = QHostAddress::LocalHost)
{
    QTcpServer server;
    server.listen(address);
    return server.serverPort();
}

class ServedRemotely {
public:
    ServedRemotely()
    {
        const std::string complaint = administer(script("make-test-authority"), { "." });
        if (!complaint.empty())
            qFatal("%s", complaint.c_str());
        start();
    }
    ~ServedRemotely() { stop(); }

    // Serves on the same port again after a stop. Returns when it answers.
    void start()
    {
        m_stunnel.setProcessChannelMode(QProcess::MergedChannels);
        m_stunnel.start(
            script(QStringLiteral("start")), { m_folder.path(), sharedDataFolder(), QString::number(port) });
        QElapsedTimer waited;
        for (waited.start(); waited.elapsed() < 10000; QThread::msleep(10)) {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
            if (socket.waitForConnected(1000))
                return;
        }
        qFatal("stunnel does not start: %s", m_stunnel.readAll().constData());
    }
    void stop()
    {
        m_stunnel.terminate();
        if (!m_stunnel.waitForFinished(5000))
            m_stunnel.kill();
    }
    // The processes of all sessions.
    std::vector<pid_t> sessions() const
    {
        const QString tasks = QStringLiteral("/proc/%1/task/").arg(m_stunnel.processId());
        std::vector<pid_t> list;
        for (const QString& thread : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile children(tasks + thread + QStringLiteral("/children"));
            if (!children.open(QIODevice::ReadOnly))
                continue; // the thread has ended meanwhile
            for (const QByteArray& number : children.readAll().split(' ')) {
                if (number.toInt() > 0)
                    list.push_back(number.toInt());
            }
        }
        return list;
    }
    // What a program of the administrator says when it fails; empty when it does not.
    std::string administer(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(program, arguments);
        if (!process.waitForFinished())
            return process.errorString().toStdString();
        return process.exitCode() == 0 ? "" : process.readAllStandardError().trimmed().toStdString();
    }
    std::string authority(const QStringList& arguments) const
    {
        return administer("openssl", QStringList { "ca", "-config", "authority.cnf" } + arguments);
    }
    std::string addRevokedList(const QString& list) const
    {
        return administer(script("add-revoked-list"), { list, "." });
    }
    QString file(const QString& name) const { return m_folder.filePath(name); }

    // What a workstation with this certificate (without one: empty) is told of the server.
    RemoteServer as(const QString& name) const
    {
        RemoteServer server { QStringLiteral("localhost"), port, {}, {}, file(QStringLiteral("authority.pem")) };
        if (!name.isEmpty()) {
            server.certificateFile = file(name + QStringLiteral(".pem"));
            server.keyFile = file(name + QStringLiteral(".key"));
        }
        return server;
    }

    const int port = freePort();

private:
    static QString script(const QString& name)
    {
        return QFileInfo(QStringLiteral(SERVER_PROGRAM)).path() + QStringLiteral("/remote/") + name;
    }
    QTemporaryDir m_folder;
    QProcess m_stunnel;
};

// One session over TLS.
struct RemoteSession {
    explicit RemoteSession(const RemoteServer& server, int timeoutMilliseconds = 15000)
        : transport(server, timeoutMilliseconds)
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
    int retries = 0;
    std::function<void()> beforeRetry;
    TlsTransport transport;
    HostSession session;
};

// Passes bytes between a port of its own and the server's; can drop the next answer and with it the connection. In a
// thread of its own, since a session that waits turns no event loop at first.
class Relay {
public:
    explicit Relay(int serverPort, const QHostAddress& address = QHostAddress::LocalHost)
        : port(freePort(address))
        , m_listener(::socket(AF_INET, SOCK_STREAM, 0))
        , m_serverPort(serverPort)
    {
        const int on = 1;
        ::setsockopt(m_listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        sockaddr_in here = at(address.toIPv4Address(), port);
        if (::bind(m_listener, reinterpret_cast<sockaddr*>(&here), sizeof here) != 0 || ::listen(m_listener, 5) != 0)
            qFatal("The relay cannot listen.");
        m_thread = std::thread([this] {
            while (!m_ends)
                relayOne();
        });
    }
    ~Relay()
    {
        m_ends = true;
        m_thread.join();
        ::close(m_listener);
    }
    void loseNextAnswer() { m_losing = true; }
    void swallowAll() { m_swallowing = true; }

    const int port;

private:
    static sockaddr_in at(quint32 address, int port)
    {
        sockaddr_in place {};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(address);
        place.sin_port = htons(static_cast<quint16>(port));
        return place;
    }
    static bool isReady(int socket)
    {
        pollfd wanted { socket, POLLIN, 0 };
        return ::poll(&wanted, 1, 1) > 0;
    }
    void relayOne()
    {
        if (!isReady(m_listener))
            return;
        const int client = ::accept(m_listener, nullptr, nullptr);
        const int server = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in there = at(INADDR_LOOPBACK, m_serverPort);
        if (::connect(server, reinterpret_cast<sockaddr*>(&there), sizeof there) == 0) {
            while (!m_ends && pass(client, server) && pass(server, client)) { }
        }
        ::close(client);
        ::close(server);
    }
    bool pass(int from, int to)
    {
        if (!isReady(from))
            return true;
        char bytes[65536];
        const ssize_t count = ::recv(from, bytes, sizeof bytes, 0);
        if (count <= 0)
            return false;
        if (m_swallowing)
            return true;
        // What the client sends reaches the server; only the answer is lost.
        if (isServer(from) && m_losing.exchange(false))
            return false;
        return ::send(to, bytes, static_cast<size_t>(count), MSG_NOSIGNAL) == count;
    }
    bool isServer(int socket) const
    {
        sockaddr_in peer {};
        socklen_t size = sizeof peer;
        ::getpeername(socket, reinterpret_cast<sockaddr*>(&peer), &size);
        return ntohs(peer.sin_port) == m_serverPort;
    }

    const int m_listener;
    const int m_serverPort;
    std::atomic<bool> m_ends = false;
    std::atomic<bool> m_losing = false;
    std::atomic<bool> m_swallowing = false;
    std::thread m_thread;
};

}
