#include "host/session/ServerConnection.h"

#include "api/Utf8.h"
#include "host/session/CallJournal.h"
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

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr qint64 QuietMilliseconds = 100; // shorter calls do not run the event loop
constexpr int SliceMilliseconds = 20;

// Shows the busy pointer during its lifetime.
class BusyPointer {
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

}

ServerConnection::ServerConnection(Transport& transport, int timeoutMilliseconds, CallJournal& journal)
    : m_transport(transport)
    , m_journal(journal)
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
        m_journal.noteNotOpened();
        throw ConnectionLost(failure.description());
    }
    m_open = true;
    m_journal.noteOpened();
}

void ServerConnection::close()
{
    if (std::exchange(m_open, false))
        m_journal.noteClosed();
    m_answered = false;
    m_progress.reset();
    m_reader = FrameReader();
    m_sent.clear();
    m_transport.close();
}

void ServerConnection::giveUp() { m_transport.giveUp(); }

// Closes the connection that the server has ended, or whose stream is out of sync.
void ServerConnection::closeLost()
{
    if (std::exchange(m_open, false))
        m_journal.noteLost();
    close();
}

void ServerConnection::lose(const QString& reason)
{
    closeLost();
    throw ConnectionLost(reason.toStdWString());
}

// Reads, after the call has ended, the events that arrived behind its answer. Posts the reading only at that time,
// because a long call processes posted events.
auto ServerConnection::readIdleLater()
{
    return qScopeGuard([this] { QMetaObject::invokeMethod(this, &ServerConnection::readIdle, Qt::QueuedConnection); });
}

void ServerConnection::send(long long number, TextView name, TextView parameter, TextView purpose)
{
    if (!m_open)
        throw ConnectionLost(L"The server is not connected.");
    // Writing may detect the end of the connection; receive() or readIdle() reports it.
    const QScopedValueRollback waiting(m_waiting, true);
    const auto readLate = readIdleLater();
    const QByteArray frame = encodeRequest(number, name, parameter, purpose);
    m_journal.noteSent(number, name, parameter, frame.size());
    if (m_transport.device()->write(frame) != frame.size())
        lose(m_transport.endReason());
    m_transport.device()->waitForBytesWritten(0); // sends it now, even if no call waits for the answer
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
        // Depends on the time, not on missing input: a server that sends a lot must not freeze the window.
        if (call.elapsed() < QuietMilliseconds || sinceTurn.elapsed() < SliceMilliseconds)
            continue;
        if (!busy)
            busy.emplace();
        reportProgress();
        m_transport.letWindowLive(call.elapsed());
        sinceTurn.restart();
    }
}

void ServerConnection::keepWithinLimits(qint64 call, qint64 silence)
{
    if (m_transport.isGivenUp())
        lose(u"You have stopped waiting for the server."_s);
    if (silence > m_timeout)
        lose(u"The server did not answer within %1 seconds."_s.arg(m_timeout / 1000.0));
    if (call > m_longestCall)
        lose(u"The server did not finish within %1 seconds."_s.arg(m_longestCall / 1000.0));
}

// Passes events and progress on, and keeps the answers to requests.
void ServerConnection::sort(Answer answer)
{
    if (answer.kind == Answer::Kind::Progress) {
        if (m_answered)
            lose(u"The server sent an invalid reply (progress after an answer)."_s);
        m_progress = std::move(answer);
    } else if (answer.kind == Answer::Kind::Event) {
        m_journal.noteEvent(answer);
        if (onEvent)
            onEvent(answer);
    } else if (answer.kind == Answer::Kind::Failed && answer.number == 0) {
        lose(QString::fromUtf8(answer.text));
    } else {
        keep(std::move(answer));
    }
}

// Once per run of the event loop, even if the server reports faster.
void ServerConnection::reportProgress()
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
        lose(m_waiting ? u"The server's reply belongs to another call."_s
                       : u"The server sent a reply without a call."_s);
    if (!sent->second.answer)
        m_journal.noteAnswer(answer);
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
        // Decodes buffered bytes before it reads more, so that the buffer does not grow.
        if (auto answer = m_reader.next())
            return answer;
        m_reader.feed(m_transport.device()->readAll());
        return m_reader.next();
    } catch (const Failure& failure) {
        lose(QString::fromStdWString(failure.description()));
    }
}

// Waits briefly for bytes; true if some arrived.
bool ServerConnection::readMore()
{
    QIODevice* const device = m_transport.device();
    // In this order, so that the last bytes of a server that has stopped are still read.
    const bool alive = m_transport.isAlive();
    if (device->bytesAvailable() > 0)
        return true;
    if (!alive) {
        const bool torn = m_reader.pending() > 0;
        lose(m_transport.endReason() + (torn ? u" Its last reply was cut off."_s : QString()));
    }
    return device->waitForReadyRead(SliceMilliseconds);
}

// While no call waits, only events and answers to requests sent ahead can arrive; after anything else the stream is out
// of sync.
void ServerConnection::readIdle()
{
    if (m_waiting || !m_open)
        return;
    try {
        const QDeadlineTimer turn(SliceMilliseconds);
        while (auto answer = nextAnswer()) {
            sort(*std::move(answer));
            // A server that keeps sending must not freeze the window; a posted call would run before the window's
            // events.
            if (turn.hasExpired())
                return QTimer::singleShot(1, this, &ServerConnection::readIdle);
        }
        if (m_transport.isAlive())
            return;
        closeLost();
    } catch (const ConnectionLost&) {
        // Reported below, like any other end.
    }
    Q_EMIT lostWhileIdle();
}

}
