#include "host/session/ServerConnection.h"

#include "api/Utf8.h"
#include "host/session/Transport.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QIODevice>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace health {

namespace {

constexpr qint64 QuietMilliseconds = 100; // shorter calls do not turn the event loop
constexpr int SliceMilliseconds = 20;

// Shows the busy pointer for as long as it lives.
class BusyPointer {
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

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
    m_answered = false;
    m_progress.reset();
    m_reader = FrameReader();
    m_sent.clear();
    m_transport.close();
}

void ServerConnection::giveUp() { m_transport.giveUp(); }

void ServerConnection::lose(const QString& reason)
{
    close();
    throw ConnectionLost(reason.toStdWString());
}

// Events that came along behind an answer are read when the call is over; posted only then, since a long call works on
// posted events itself.
auto ServerConnection::readIdleLater()
{
    return qScopeGuard([this] { QMetaObject::invokeMethod(this, &ServerConnection::readIdle, Qt::QueuedConnection); });
}

void ServerConnection::send(long long number, TextView name, TextView parameter, TextView purpose)
{
    if (!m_open)
        throw ConnectionLost(L"The server is not connected.");
    // Writing may find the end of the connection; that is told where the answer is received, or by readIdle.
    const QScopedValueRollback waiting(m_waiting, true);
    const auto readLate = readIdleLater();
    const QByteArray frame = encodeRequest(number, name, parameter, purpose);
    if (m_transport.device()->write(frame) != frame.size())
        lose(m_transport.endReason());
    m_transport.device()->waitForBytesWritten(0); // on its way at once, also while nobody waits for the answer
    m_sent[number];
}

void ServerConnection::drop(long long number)
{
    const auto sent = m_sent.find(number);
    if (sent == m_sent.end())
        return;
    sent->second.isDropped = true;
    if (sent->second.answer)
        keep(*std::move(sent->second.answer));
}

QByteArray ServerConnection::receive(long long number)
{
    const QScopedValueRollback waiting(m_waiting, true);
    if (!m_open)
        throw ConnectionLost(L"The server is not connected.");
    const auto readLate = readIdleLater();
    Answer answer = waitFor(number);
    if (answer.kind == Answer::Kind::Failed)
        throw Failure(widen({ answer.text.data(), static_cast<std::size_t>(answer.text.size()) }));
    return std::move(answer.text);
}

Answer ServerConnection::waitFor(long long number)
{
    QElapsedTimer call;
    call.start();
    QElapsedTimer silence = call;
    QElapsedTimer sinceTurn = call;
    m_transport.beginWait();
    std::optional<BusyPointer> busy;
    for (;;) {
        if (auto& sent = m_sent[number]; sent.answer) {
            Answer answer = *std::move(sent.answer);
            m_sent.erase(number);
            return answer;
        }
        if (auto answer = nextAnswer()) {
            silence.restart();
            sort(*std::move(answer));
        } else if (readMore()) {
            silence.restart();
        }
        keepWithinLimits(call.elapsed(), silence.elapsed());
        // By the time, not only when there is nothing to read: a server that sends much must not stop the window.
        if (call.elapsed() < QuietMilliseconds || sinceTurn.elapsed() < SliceMilliseconds)
            continue;
        if (!busy)
            busy.emplace();
        tellProgress();
        m_transport.letWindowLive(call.elapsed());
        sinceTurn.restart();
    }
}

void ServerConnection::keepWithinLimits(qint64 call, qint64 silence)
{
    if (m_transport.isGivenUp())
        lose(tr("You have stopped waiting for the server."));
    if (silence > m_timeout)
        lose(tr("The server did not answer within %1 seconds.").arg(m_timeout / 1000.0));
    if (call > m_longestCall)
        lose(tr("The server did not finish within %1 seconds.").arg(m_longestCall / 1000.0));
}

// Hands news on and keeps the answers to requests.
void ServerConnection::sort(Answer answer)
{
    if (answer.kind == Answer::Kind::Progress) {
        if (m_answered)
            lose(tr("The server's answer was garbled (progress after an answer)."));
        m_progress = std::move(answer);
    } else if (answer.kind == Answer::Kind::Event) {
        if (onEvent)
            onEvent(answer);
    } else if (answer.kind == Answer::Kind::Failed && answer.number == 0) {
        lose(QString::fromUtf8(answer.text));
    } else {
        keep(std::move(answer));
    }
}

// Once for each turn of the window: a server that reports faster is read all the same.
void ServerConnection::tellProgress()
{
    const auto progress = std::exchange(m_progress, std::nullopt);
    if (progress && onProgress)
        onProgress(static_cast<int>(std::clamp(progress->number, 0LL, 100LL)), QString::fromUtf8(progress->text));
}

void ServerConnection::keep(Answer answer)
{
    const auto sent = m_sent.find(answer.number);
    m_answered = true;
    if (sent == m_sent.end())
        lose(
            m_waiting ? tr("The server's answer belongs to another call.") : tr("The server answered without a call."));
    if (!sent->second.isDropped) {
        sent->second.answer = std::move(answer);
        return;
    }
    const bool failed = answer.kind == Answer::Kind::Failed;
    const QString text = QString::fromUtf8(answer.text);
    m_sent.erase(sent);
    if (failed && onDroppedFailure)
        onDroppedFailure(text);
}

std::optional<Answer> ServerConnection::nextAnswer()
{
    try {
        // What has come is read to its end first: the rest waits where it does not pile up.
        if (auto answer = m_reader.next())
            return answer;
        m_reader.feed(m_transport.device()->readAll());
        return m_reader.next();
    } catch (const Failure& failure) {
        lose(QString::fromStdWString(failure.description()));
    }
}

// Waits a little for bytes; true when some came.
bool ServerConnection::readMore()
{
    QIODevice* const device = m_transport.device();
    // In this order: what a server said before it ended is read first.
    const bool alive = m_transport.isAlive();
    if (device->bytesAvailable() > 0)
        return true;
    if (!alive) {
        const bool torn = m_reader.pending() > 0;
        lose(m_transport.endReason() + (torn ? tr(" Its last answer was cut off.") : QString()));
    }
    return device->waitForReadyRead(SliceMilliseconds);
}

// What comes while no call waits can only be events and answers to requests sent ahead; after anything else the stream
// is out of step.
void ServerConnection::readIdle()
{
    if (m_waiting || !m_open)
        return;
    try {
        const QDeadlineTimer turn(SliceMilliseconds);
        while (auto answer = nextAnswer()) {
            sort(*std::move(answer));
            // A server that sends without end must not stop the window; what is posted would come before its turn.
            if (turn.hasExpired())
                return QTimer::singleShot(1, this, &ServerConnection::readIdle);
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
