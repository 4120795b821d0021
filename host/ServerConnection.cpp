#include "host/ServerConnection.h"

#include "host/Transport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QIODevice>
#include <QScopedValueRollback>

namespace health {

namespace {
constexpr qint64 QuietMilliseconds = 100; // shorter calls do not turn the event loop
constexpr int SliceMilliseconds = 20;
}

ServerConnection::ServerConnection(Transport& transport, int timeoutMilliseconds)
    : m_transport(transport)
    , m_timeout(timeoutMilliseconds)
{
    connect(&transport, &Transport::readyRead, this, &ServerConnection::readIdle);
    connect(&transport, &Transport::ended, this, &ServerConnection::readIdle);
}

void ServerConnection::open()
{
    close();
    try {
        m_transport.open();
    } catch (const Failure& failure) {
        throw ConnectionLost(failure.description());
    }
    m_open = true;
}

void ServerConnection::close()
{
    m_open = false;
    m_reader = FrameReader();
    m_transport.close();
}

void ServerConnection::lose(const QString& reason)
{
    close();
    throw ConnectionLost(reason.toStdWString());
}

QByteArray ServerConnection::exchange(long long number, TextView name, TextView parameter)
{
    const QScopedValueRollback waiting(m_waiting, true);
    if (!m_open)
        throw ConnectionLost(L"The server is not connected.");
    const QByteArray frame = encodeRequest(number, name, parameter);
    if (m_transport.device()->write(frame) != frame.size())
        lose(m_transport.endReason());
    // Events that came along behind the answer are read when the call is over.
    QMetaObject::invokeMethod(this, &ServerConnection::readIdle, Qt::QueuedConnection);
    return waitFor(number);
}

QByteArray ServerConnection::waitFor(long long number)
{
    QElapsedTimer silence;
    silence.start();
    for (;;) {
        const auto answer = nextAnswer();
        if (!answer) {
            if (silence.elapsed() > m_timeout)
                lose(tr("The server did not answer within %1 seconds.").arg(m_timeout / 1000.0));
            readMore(silence.elapsed());
            continue;
        }
        silence.restart();
        if (answer->kind == Answer::Kind::Progress && onProgress)
            onProgress(static_cast<int>(answer->number), QString::fromUtf8(answer->text));
        if (answer->kind == Answer::Kind::Event && onEvent)
            onEvent(*answer);
        if (answer->kind != Answer::Kind::Reply && answer->kind != Answer::Kind::Failed)
            continue;
        if (answer->kind == Answer::Kind::Failed && answer->number == 0)
            lose(QString::fromUtf8(answer->text));
        if (answer->number != number)
            lose(tr("The server's answer belongs to another call."));
        if (answer->kind == Answer::Kind::Failed)
            throw Failure(widen({ answer->text.data(), static_cast<std::size_t>(answer->text.size()) }));
        return answer->text;
    }
}

std::optional<Answer> ServerConnection::nextAnswer()
{
    try {
        m_reader.feed(m_transport.device()->readAll());
        return m_reader.next();
    } catch (const Failure& failure) {
        lose(QString::fromStdWString(failure.description()));
    }
}

void ServerConnection::readMore(qint64 waited)
{
    QIODevice* const device = m_transport.device();
    const bool alive = m_transport.isAlive();
    if (device->bytesAvailable() > 0)
        return;
    if (!alive) {
        const bool torn = m_reader.pending() > 0;
        lose(m_transport.endReason() + (torn ? tr(" Its last answer was cut off.") : QString()));
    }
    device->waitForReadyRead(SliceMilliseconds);
    if (waited > QuietMilliseconds)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// What comes while no call waits can only be events.
void ServerConnection::readIdle()
{
    if (m_waiting || !m_open)
        return;
    try {
        while (const auto answer = nextAnswer()) {
            if (answer->kind == Answer::Kind::Event && onEvent)
                onEvent(*answer);
        }
        if (m_transport.isAlive())
            return;
        close();
    } catch (const ConnectionLost&) {
        // Told below, as any other end is.
    }
    Q_EMIT lostWhileIdle();
}

}
