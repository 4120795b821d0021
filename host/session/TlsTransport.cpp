#include "host/session/TlsTransport.h"

#include "api/Failure.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QSslConfiguration>
#include <QSslKey>
#include <QThread>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// Detects within two minutes, even between calls, that the server disappeared without closing the connection.
void keepAlive(QSslSocket& socket)
{
    socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    const auto set = [&](int option, int value) {
        ::setsockopt(static_cast<int>(socket.socketDescriptor()), IPPROTO_TCP, option, &value, sizeof value);
    };
    set(TCP_KEEPIDLE, 60);
    set(TCP_KEEPINTVL, 15);
    set(TCP_KEEPCNT, 4);
}

// Empty if there is no such file; QSslCertificate::fromPath would search the whole folder.
QList<QSslCertificate> certificatesIn(const QString& name)
{
    QFile file(name);
    return !name.isEmpty() && file.open(QIODevice::ReadOnly) ? QSslCertificate::fromData(file.readAll(), QSsl::Pem)
                                                             : QList<QSslCertificate>();
}

QByteArray readFile(const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(u"%1 cannot be read: %2."_s.arg(name, file.errorString()).toStdWString());
    return file.readAll();
}

QList<QSslCertificate> readCertificates(const QString& name)
{
    const QList<QSslCertificate> certificates = QSslCertificate::fromData(readFile(name), QSsl::Pem);
    if (certificates.isEmpty())
        throw Failure(u"There is no certificate in %1."_s.arg(name).toStdWString());
    return certificates;
}

QSslKey readKey(const QString& name)
{
    const QByteArray text = readFile(name);
    for (const QSsl::KeyAlgorithm algorithm : { QSsl::Ec, QSsl::Rsa }) {
        QSslKey key(text, algorithm, QSsl::Pem, QSsl::PrivateKey);
        if (!key.isNull())
            return key;
    }
    throw Failure(u"There is no private key in %1, or a pass phrase protects it."_s.arg(name).toStdWString());
}

}

QString certificateUser(const QString& file)
{
    const QList<QSslCertificate> certificates = certificatesIn(file);
    return certificates.isEmpty() ? QString() : certificates[0].subjectInfo(QSslCertificate::CommonName).value(0);
}

TlsTransport::TlsTransport(RemoteServer server, int timeoutMilliseconds)
    : m_server(std::move(server))
    , m_timeout(timeoutMilliseconds)
{
}

TlsTransport::~TlsTransport() { close(); }

QSslConfiguration TlsTransport::readFiles() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
    configuration.setCaCertificates(readCertificates(m_server.authorityFile)); // instead of the system's
    if (m_server.certificateFile.isEmpty())
        return configuration;
    configuration.setLocalCertificateChain(readCertificates(m_server.certificateFile));
    configuration.setPrivateKey(readKey(m_server.keyFile));
    return configuration;
}

void TlsTransport::open()
{
    close();
    m_alert.reset();
    m_certificateErrors.clear();
    m_error.reset();
    const QSslConfiguration configuration = readFiles();
    m_socket.reset(new QSslSocket);
    m_socket->setSslConfiguration(configuration);
    connect(m_socket.get(), &QSslSocket::alertReceived, this,
        [this](QSsl::AlertLevel, QSsl::AlertType type, const QString& text) {
            if (type == QSsl::AlertType::CloseNotify)
                return;
            m_alert = type;
            m_alertText = text;
        });
    connect(m_socket.get(), &QSslSocket::sslErrors, this,
        [this](const QList<QSslError>& errors) { m_certificateErrors = errors; });
    connect(m_socket.get(), &QSslSocket::errorOccurred, this, &TlsTransport::noteError);
    m_socket->connectToHostEncrypted(m_server.host, static_cast<quint16>(m_server.port));
    // In TLS 1.3 the server refuses a certificate only after the handshake, in place of its first bytes.
    const auto isAccepted = [this] { return m_socket->isEncrypted() && m_socket->bytesAvailable() > 0; };
    const bool inTime = waitUntil(isAccepted);
    if (!isAccepted()) {
        const QString reason = openingReason(!inTime);
        close();
        throw Failure(reason.toStdWString());
    }
    keepAlive(*m_socket);
    connect(m_socket.get(), &QSslSocket::readyRead, this, &Transport::readyRead);
}

// Waits for the condition or for the end of the connection; false on a time-out. The window is painted meanwhile; input
// and timers are held back, as in any call. Polls, because a wake-up by a timer would be held back, too.
template<typename Condition>
bool TlsTransport::waitUntil(Condition condition)
{
    QElapsedTimer waited;
    waited.start();
    beginWait();
    while (!condition() && !m_error && !isGivenUp()) {
        if (waited.elapsed() > m_timeout)
            return false;
        letWindowLive(waited.elapsed());
        QThread::msleep(1);
    }
    return true;
}

// The first error ends the connection. The socket itself may stay connected, for instance after the close notification
// of TLS or with a key that does not match. Time-outs are not errors.
void TlsTransport::noteError(QAbstractSocket::SocketError error)
{
    if (m_error || error == QAbstractSocket::SocketTimeoutError || error == QAbstractSocket::TemporaryError)
        return;
    m_error = error;
    m_errorText = m_socket->errorString();
    Q_EMIT ended();
}

void TlsTransport::close()
{
    if (!m_socket)
        return;
    m_socket->disconnect(this);
    m_socket->disconnectFromHost();
    m_socket.reset();
}

// --- Reasons for failures ---

QString TlsTransport::openingReason(bool timedOut) const
{
    if (m_alert)
        return alertReason();
    if (!m_certificateErrors.isEmpty())
        return serverCertificateReason();
    if (isGivenUp())
        return u"You have stopped waiting for the server."_s;
    if (timedOut)
        return u"The server %1 did not answer within %2 seconds."_s.arg(m_server.host).arg(m_timeout / 1000.0);
    switch (m_error.value_or(QAbstractSocket::UnknownSocketError)) {
    case QAbstractSocket::HostNotFoundError:
        return u"There is no computer named %1."_s.arg(m_server.host);
    case QAbstractSocket::ConnectionRefusedError:
        return u"No server answers at %1, port %2."_s.arg(m_server.host).arg(m_server.port);
    case QAbstractSocket::RemoteHostClosedError:
        return u"The server %1 has closed the connection before a session began."_s.arg(m_server.host);
    case QAbstractSocket::SslInvalidUserDataError:
        return u"The private key in %1 does not match the certificate in %2."_s.arg(
            m_server.keyFile, m_server.certificateFile);
    default:
        return u"The connection to %1 failed: %2."_s.arg(m_server.host, m_errorText);
    }
}

QString TlsTransport::endReason() const
{
    if (m_alert)
        return alertReason();
    if (!m_error || m_error == QAbstractSocket::RemoteHostClosedError)
        return u"The server %1 has closed the connection."_s.arg(m_server.host);
    return u"The connection to %1 was lost: %2."_s.arg(m_server.host, m_errorText);
}

QString TlsTransport::alertReason() const
{
    switch (*m_alert) {
    case QSsl::AlertType::HandshakeFailure: // TLS 1.2 has no more specific alert
        if (!m_server.certificateFile.isEmpty())
            break;
        [[fallthrough]];
    case QSsl::AlertType::CertificateRequired:
        return u"The server %1 requires a client certificate."_s.arg(m_server.host);
    case QSsl::AlertType::CertificateExpired:
        // An outdated revocation list at the server raises the same alert.
        if (!ownCertificateHasExpired())
            return u"The server's list of revoked certificates is out of date. Contact its administrator."_s;
        return u"The server refused your certificate: it has expired."_s;
    case QSsl::AlertType::CertificateRevoked:
        return u"The server refused your certificate: it has been revoked."_s;
    case QSsl::AlertType::UnknownCa:
        return u"The server refused your certificate: it is not from the server's authority."_s;
    case QSsl::AlertType::BadCertificate:
    case QSsl::AlertType::UnsupportedCertificate:
    case QSsl::AlertType::CertificateUnknown:
        return u"The server refused your certificate: it is not valid for this."_s;
    default:
        break;
    }
    return u"The server %1 refused the secure connection: %2."_s.arg(m_server.host, m_alertText);
}

QString TlsTransport::serverCertificateReason() const
{
    for (const QSslError& error : m_certificateErrors) {
        switch (error.error()) {
        case QSslError::HostNameMismatch:
            return u"The server's certificate is not for %1. The connection may not be secure; nothing was sent."_s.arg(
                m_server.host);
        case QSslError::CertificateExpired:
            return u"The server's certificate has expired. Contact its administrator."_s;
        case QSslError::CertificateNotYetValid:
            return u"The server's certificate is not yet valid. Is this computer's clock right?"_s;
        default:
            break;
        }
    }
    return u"The server's certificate is not from an authority in %1. The connection may not be secure; nothing was "
           "sent."_s.arg(m_server.authorityFile);
}

bool TlsTransport::ownCertificateHasExpired() const
{
    const QList<QSslCertificate> own = certificatesIn(m_server.certificateFile);
    return own.isEmpty() || own[0].expiryDate() < QDateTime::currentDateTimeUtc();
}

}
