#pragma once

#include "host/session/RemoteServer.h"
#include "host/session/Transport.h"

#include <QSslError>
#include <QSslSocket>

#include <memory>
#include <optional>

namespace health {

// The user named by a certificate file (the common name); empty if it names no user.
QString certificateUser(const QString& file);

// A connection to a remote server over TLS with a client certificate. Each opening reads the files again, so that a
// renewed certificate takes effect at the next try.
class TlsTransport : public Transport {
    Q_OBJECT
public:
    explicit TlsTransport(RemoteServer server, int timeoutMilliseconds = 15'000);
    ~TlsTransport() override;

    // Returns when the server has accepted the client's certificate, which its first bytes confirm.
    void open() override;
    void close() override;
    QIODevice* device() override { return m_socket.get(); }
    bool isAlive() const override { return m_socket && !m_error; }
    QString endReason() const override;

private:
    QSslConfiguration readFiles() const;
    template<typename Condition>
    bool waitUntil(Condition condition);
    QString openingReason(bool timedOut) const;
    QString alertReason() const;
    QString serverCertificateReason() const;
    void noteError(QAbstractSocket::SocketError error);
    bool ownCertificateHasExpired() const;

    RemoteServer m_server;
    int m_timeout;
    std::unique_ptr<QSslSocket, DeleteLater> m_socket;
    std::optional<QSsl::AlertType> m_alert; // with which the server refused the connection
    QString m_alertText;
    std::optional<QAbstractSocket::SocketError> m_error; // what ended the connection
    QString m_errorText;
    QList<QSslError> m_certificateErrors; // of the server's certificate
};

}
