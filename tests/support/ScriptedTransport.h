// A byte stream that a function of the test answers.
#pragma once

#include "api/Failure.h"
#include "host/session/Transport.h"

#include <QIODevice>
#include <QThread>

#include <functional>
#include <memory>

namespace health::test {

inline QByteArray framed(const QByteArray& body)
{
    return QByteArray::number(body.size()).rightJustified(8, '0') + body;
}

struct Request {
    int connection; // counted from 1
    long long number;
    QString name;
    QString parameter;
};

// The stream: passes each request to `answer`, whose result can then be read.
class ScriptedStream : public QIODevice {
public:
    using AnswerFunction = std::function<QByteArray(const Request&)>;

    ScriptedStream(int connection, AnswerFunction answer)
        : m_connection(connection)
        , m_answer(std::move(answer))
    {
        open(ReadWrite | Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_answers.size(); }
    bool waitForReadyRead(int milliseconds) override
    {
        if (m_answers.isEmpty())
            QThread::msleep(static_cast<unsigned long>(milliseconds));
        return !m_answers.isEmpty();
    }
    void push(const QByteArray& bytes)
    {
        m_answers += bytes;
        Q_EMIT readyRead();
    }

protected:
    qint64 readData(char* data, qint64 most) override
    {
        const qint64 count = std::min<qint64>(most, m_answers.size());
        std::copy_n(m_answers.constData(), count, data);
        m_answers.remove(0, count);
        return count;
    }
    qint64 writeData(const char* data, qint64 size) override
    {
        const QByteArray body = QByteArray(data, size).mid(8);
        const QList<QByteArray> parts = body.split('\n');
        m_answers += m_answer({ m_connection, parts[0].toLongLong(), QString::fromUtf8(parts[1]),
            QString::fromUtf8(parts.mid(2).join('\n')) });
        return size;
    }

private:
    int m_connection;
    AnswerFunction m_answer;
    QByteArray m_answers;
};

class ScriptedTransport : public Transport {
public:
    ScriptedStream::AnswerFunction answer;
    int connections = 0;
    int refuseConnections = 0; // how many calls of open() fail
    bool endsAfterAnswer = false;

    void open() override
    {
        close();
        if (refuseConnections > 0) {
            --refuseConnections;
            throw Failure(L"Nobody is there.");
        }
        endsAfterAnswer = false;
        m_stream = std::make_unique<ScriptedStream>(++connections, answer);
        connect(m_stream.get(), &QIODevice::readyRead, this, &Transport::readyRead);
    }
    void close() override { m_stream.reset(); }
    QIODevice* device() override { return m_stream.get(); }
    // Like a process that ends after its last output.
    bool isAlive() const override { return m_stream && !(endsAfterAnswer && m_stream->bytesAvailable() == 0); }
    QString endReason() const override { return QStringLiteral("The server process has stopped."); }

    ScriptedStream& stream() { return *m_stream; }
    void end()
    {
        endsAfterAnswer = true;
        Q_EMIT ended();
    }

    static QByteArray reply(const Request& request, const QByteArray& text)
    {
        return framed('R' + QByteArray::number(request.number) + '\n' + text);
    }

private:
    std::unique_ptr<ScriptedStream> m_stream;
};

}
