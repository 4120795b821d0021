// The real server behind its door (haproxy), with a test authority.
#pragma once

#include "host/session/TlsTransport.h"
#include "tests/support/RealServer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <algorithm>
#include <iterator>

#include <signal.h>

namespace health::test {

inline int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

class ServedRemotely {
public:
    // The server uses the certificate of this name.
    explicit ServedRemotely(const QString& certificate = "server", const QStringList& kind = {})
    {
        const std::string complaint = administer(script("make-test-authority"), QStringList { "." } + kind);
        if (!complaint.empty())
            qFatal("%s", complaint.c_str());
        for (const auto* const ending : { ".pem", ".key" })
            rename(file(certificate + ending).toLocal8Bit(), file(QStringLiteral("server") + ending).toLocal8Bit());
        start();
    }
    ~ServedRemotely() { stop(); }

    // Also serves on the same port again after stop(). Returns when it answers.
    void start()
    {
        m_door.setProcessChannelMode(QProcess::MergedChannels);
        m_door.start(script("start"), { m_folder.path(), sharedDataFolder(), QString::number(port) });
        QElapsedTimer waited;
        for (waited.start(); waited.elapsed() < 10000; QThread::msleep(10)) {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
            if (socket.waitForConnected(1000))
                return;
        }
        qFatal("The door does not start: %s", m_door.readAll().constData());
    }
    void stop()
    {
        m_door.terminate();
        if (!m_door.waitForFinished(5000))
            m_door.kill();
    }
    // The processes of all sessions: children of the listener that the script starts beside the door.
    std::vector<pid_t> sessions() const
    {
        std::vector<pid_t> list;
        for (const pid_t program : children(static_cast<pid_t>(m_door.processId())))
            std::ranges::copy(children(program), std::back_inserter(list));
        return list;
    }
    // Runs a program of the administrator; its output if it fails, else empty.
    std::string administer(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(program, arguments);
        if (!process.waitForFinished())
            return process.errorString().toStdString();
        const QByteArray complaint = process.readAllStandardError() + '\n' + process.readAllStandardOutput();
        return process.exitCode() == 0 ? "" : complaint.trimmed().toStdString();
    }
    std::string authority(const QStringList& arguments) const
    {
        return administer("openssl", QStringList { "ca", "-config", "authority.cnf" } + arguments);
    }
    std::string addRevokedList(const QString& list, const QStringList& certificate = {}) const
    {
        return administer(script("add-revoked-list"), QStringList { list, "." } + certificate);
    }
    QString file(const QString& name) const { return m_folder.filePath(name); }

    // The server as a workstation with this certificate knows it; an empty name for no certificate.
    RemoteServer as(const QString& name) const
    {
        RemoteServer server { "localhost", port, {}, {}, file("authority.pem") };
        if (!name.isEmpty()) {
            server.certificateFile = file(name + ".pem");
            server.keyFile = file(name + ".key");
        }
        return server;
    }

    static QString script(const QString& name)
    {
        return QFileInfo(QStringLiteral(SERVER_PROGRAM)).path() + QStringLiteral("/remote/") + name;
    }

    const int port = freePort();

private:
    static std::vector<pid_t> children(pid_t parent)
    {
        QFile file(QStringLiteral("/proc/%1/task/%1/children").arg(parent));
        std::vector<pid_t> list;
        if (!file.open(QIODevice::ReadOnly))
            return list; // the process has ended
        for (const QByteArray& number : file.readAll().simplified().split(' ')) {
            if (!number.isEmpty())
                list.push_back(number.toInt());
        }
        return list;
    }
    QTemporaryDir m_folder;
    QProcess m_door;
};

}
