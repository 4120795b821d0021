#include "host/session/DisturbedTransport.h"

#include "api/Failure.h"
#include "host/session/ReadMarks.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {

constexpr int TurnMilliseconds = 20;
constexpr qsizetype FrameDigits = 8;
constexpr qint64 LongestBurst = 1000; // milliseconds whose events are raised together

// Takes the first whole frame from a buffer, or all of a buffer that does not begin with a frame; empty if the frame is
// incomplete.
QByteArray takeFrame(QByteArray& buffer)
{
    if (buffer.size() < FrameDigits)
        return {};
    bool isFrame = false;
    const qsizetype whole = FrameDigits + buffer.first(FrameDigits).toLongLong(&isFrame);
    if (!isFrame || whole < FrameDigits)
        return std::exchange(buffer, {});
    if (buffer.size() < whole)
        return {};
    const QByteArray frame = buffer.first(whole);
    buffer.remove(0, whole);
    return frame;
}

QByteArray framed(const QByteArray& body)
{
    return QByteArray::number(body.size()).rightJustified(FrameDigits, '0') + body;
}

bool isSave(const QByteArray& name) { return changesRecords(QString::fromUtf8(name).toStdWString()); }

bool isOfHost(const QByteArray& name) { return name.startsWith("MEVHOST "); }

}

DisturbedStream::DisturbedStream(QIODevice& inner, Disturbances& disturbances)
    : m_inner(inner)
    , m_disturbances(disturbances)
{
    m_clock.start();
    open(ReadWrite | Unbuffered);
}

void DisturbedStream::dropStream()
{
    m_lost = true;
    m_delayed.clear();
    m_ready.clear();
}

void DisturbedStream::push(const QByteArray& bytes)
{
    m_delayed.push_back({ m_clock.elapsed() + m_disturbances.delay, bytes });
}

void DisturbedStream::take()
{
    if (m_lost)
        return;
    takeAnswers();
    raiseEvents();
    while (!m_delayed.empty() && m_delayed.front().due <= m_clock.elapsed()) {
        m_ready += m_delayed.front().bytes;
        m_delayed.pop_front();
    }
}

void DisturbedStream::takeAnswers()
{
    m_answers += m_inner.readAll();
    for (QByteArray frame = takeFrame(m_answers); !frame.isEmpty(); frame = takeFrame(m_answers))
        push(garbledIfWanted(frame));
}

QByteArray DisturbedStream::garbledIfWanted(const QByteArray& answer)
{
    const bool isReply = answer.size() > FrameDigits && answer[FrameDigits] == 'R';
    if (m_disturbances.garbled == Disturbances::Garbled::Nothing || !isReply)
        return answer;
    if (m_disturbances.garbled == Disturbances::Garbled::NextReply)
        m_disturbances.garbled = Disturbances::Garbled::Nothing;
    return "GARBAGE!" + answer.sliced(FrameDigits);
}

void DisturbedStream::raiseEvents()
{
    const qint64 now = m_clock.elapsed();
    if (m_disturbances.eventsPerSecond == 0 || m_events.isEmpty()) {
        m_raisedUntil = now;
        return;
    }
    const qint64 count = std::min(now - m_raisedUntil, LongestBurst) * m_disturbances.eventsPerSecond / 1000;
    if (count == 0)
        return;
    m_raisedUntil = now;
    for (qint64 i = 0; i < count; ++i)
        push(framed('E' + m_events[static_cast<qsizetype>(i) % m_events.size()] + ".LAB\n"));
}

// QIODevice asks for the number of bytes before each read.
qint64 DisturbedStream::bytesAvailable() const
{
    const_cast<DisturbedStream*>(this)->take();
    return m_ready.size();
}

bool DisturbedStream::waitForBytesWritten(int milliseconds)
{
    return !m_lost && m_inner.waitForBytesWritten(milliseconds);
}

bool DisturbedStream::waitForReadyRead(int milliseconds)
{
    QElapsedTimer waited;
    waited.start();
    while (bytesAvailable() == 0 && !m_lost && waited.elapsed() < milliseconds)
        m_inner.waitForReadyRead(1);
    return bytesAvailable() > 0;
}

qint64 DisturbedStream::readData(char* data, qint64 most)
{
    take();
    const auto count = std::min<qsizetype>(most, m_ready.size());
    std::copy_n(m_ready.constData(), count, data);
    m_ready.remove(0, count);
    return count;
}

qint64 DisturbedStream::writeData(const char* data, qint64 size)
{
    m_requests.append(data, size);
    for (QByteArray frame = takeFrame(m_requests); !frame.isEmpty(); frame = takeFrame(m_requests))
        pass(frame);
    return size;
}

void DisturbedStream::pass(const QByteArray& request)
{
    const QList<QByteArray> lines = request.sliced(FrameDigits).split('\n');
    const QByteArray number = lines[0].split(' ')[0];
    const QByteArray name = lines.value(1);
    if (m_lost)
        return;
    if (isRefused(name))
        return push(framed('R' + number + "\n-1^The laboratory has refused this call."));
    m_inner.write(request);
    noteSubscription(name, lines.value(2));
    if (!isLost(name))
        return;
    m_inner.waitForBytesWritten(TurnMilliseconds);
    dropStream();
}

bool DisturbedStream::isLost(const QByteArray& name)
{
    if (isOfHost(name))
        return false;
    ++m_calls;
    if (m_disturbances.losesNextSave && isSave(name)) {
        m_disturbances.losesNextSave = false;
        return true;
    }
    return m_disturbances.loseEvery > 0 && m_calls % m_disturbances.loseEvery == 0;
}

bool DisturbedStream::isRefused(const QByteArray& name)
{
    switch (m_disturbances.refused) {
    case Disturbances::Refused::Nothing:
        return false;
    case Disturbances::Refused::EveryCall:
        return !isOfHost(name);
    case Disturbances::Refused::NextSave:
        if (!isSave(name))
            return false;
        m_disturbances.refused = Disturbances::Refused::Nothing;
        return true;
    }
    return false;
}

void DisturbedStream::noteSubscription(const QByteArray& name, const QByteArray& event)
{
    if (name == "MEVHOST SUBSCRIBE" && !m_events.contains(event))
        m_events.append(event);
    else if (name == "MEVHOST UNSUBSCRIBE")
        m_events.removeAll(event);
}

// --- DisturbedTransport ---

DisturbedTransport::DisturbedTransport(std::unique_ptr<Transport> inner)
    : m_inner(std::move(inner))
{
    m_inner->onWait = [this](qint64 milliseconds) { return onWait && onWait(milliseconds); };
    connect(m_inner.get(), &Transport::readyRead, this, &Transport::readyRead);
    connect(m_inner.get(), &Transport::ended, this, &Transport::ended);
    connect(&m_turn, &QTimer::timeout, this, &DisturbedTransport::followStorm);
}

void DisturbedTransport::disturb(const Disturbances& disturbances)
{
    const bool stops = disturbances.isStopped && !m_disturbances.isStopped;
    m_disturbances = disturbances;
    if (m_disturbances == Disturbances())
        m_turn.stop();
    else
        m_turn.start(TurnMilliseconds);
    m_announced = m_disturbances;
    Q_EMIT disturbed();
    if (stops)
        loseConnection();
}

void DisturbedTransport::loseConnection()
{
    if (!m_stream || m_stream->isLost())
        return;
    m_stream->dropStream();
    Q_EMIT ended();
}

// Reports delayed answers and events, and disturbances that have happened.
void DisturbedTransport::followStorm()
{
    if (m_announced != m_disturbances) {
        m_announced = m_disturbances;
        Q_EMIT disturbed();
    }
    if (m_stream && (m_stream->isLost() || m_stream->bytesAvailable() > 0))
        Q_EMIT readyRead();
}

void DisturbedTransport::open()
{
    close();
    if (m_disturbances.isStopped)
        throw Failure(L"The laboratory has stopped the server.");
    m_inner->open();
    m_stream.reset(new DisturbedStream(*m_inner->device(), m_disturbances));
}

void DisturbedTransport::close()
{
    if (m_stream)
        m_stream->dropStream(); // it is deleted later than the stream that it reads
    m_stream.reset();
    m_inner->close();
}

bool DisturbedTransport::isAlive() const
{
    return m_stream && !m_stream->isLost() && (m_inner->isAlive() || m_stream->hasMore());
}

QString DisturbedTransport::endReason() const
{
    return m_stream && m_stream->isLost() ? u"The laboratory has cut the connection."_s : m_inner->endReason();
}

}
