#pragma once

#include "host/session/Transport.h"

#include <QElapsedTimer>
#include <QIODevice>
#include <QTimer>

#include <deque>
#include <memory>

namespace health {

// How the stream to a server is disturbed. The default disturbs nothing.
struct Disturbances {
    enum class Garbled {
        Nothing,
        NextReply,
        EveryReply,
    };
    enum class Refused {
        Nothing,
        NextSave, // of a record
        EveryCall, // but the host's own, so that users can sign on
    };

    int delay = 0; // milliseconds until each answer arrives, in addition to the server's time
    int loseEvery = 0; // the connection is lost at every n-th call, after the server has received it; 0: never
    bool losesNextSave = false; // of a record, after the server has received it
    Garbled garbled = Garbled::Nothing;
    Refused refused = Refused::Nothing; // answered "-1^..." instead of reaching the server
    int eventsPerSecond = 0; // for the names that the session has subscribed to
    bool isStopped = false; // there is no server

    bool operator==(const Disturbances&) const = default;
};

// The disturbed byte stream: takes whole frames apart from each other, and passes bytes that are no frames on as they
// are.
class DisturbedStream : public QIODevice {
public:
    // Both must outlive the stream, which changes disturbances that happen once.
    DisturbedStream(QIODevice& inner, Disturbances& disturbances);

    // Nothing more passes in either direction.
    void dropStream();
    bool isLost() const { return m_lost; }
    // Answers are on their way.
    bool hasMore() const { return !m_lost && (!m_ready.isEmpty() || !m_delayed.empty()); }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;
    bool waitForBytesWritten(int milliseconds) override;
    bool waitForReadyRead(int milliseconds) override;

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    struct Delayed {
        qint64 due;
        QByteArray bytes;
    };

    void take();
    void takeAnswers();
    void raiseEvents();
    void pass(const QByteArray& request);
    bool isRefused(const QByteArray& name);
    bool isLost(const QByteArray& name);
    void noteSubscription(const QByteArray& name, const QByteArray& event);
    QByteArray garbledIfWanted(const QByteArray& answer);
    void push(const QByteArray& bytes);

    QIODevice& m_inner;
    Disturbances& m_disturbances;
    QElapsedTimer m_clock;
    QByteArray m_requests; // an incomplete frame of the host
    QByteArray m_answers; // an incomplete frame of the server
    std::deque<Delayed> m_delayed;
    QByteArray m_ready; // to be read
    QList<QByteArray> m_events; // names that the session has subscribed to
    int m_calls = 0;
    qint64 m_raisedUntil = 0; // milliseconds of the clock
    bool m_lost = false;
};

// A transport that disturbs another one, for tests, measurements and the laboratory.
class DisturbedTransport : public Transport {
    Q_OBJECT
public:
    explicit DisturbedTransport(std::unique_ptr<Transport> inner);

    const Disturbances& disturbances() const { return m_disturbances; }
    void disturb(const Disturbances& disturbances);
    // Loses the open connection now.
    void loseConnection();

    void open() override;
    void close() override;
    QIODevice* device() override { return m_stream.get(); }
    bool isAlive() const override;
    QString endReason() const override;

Q_SIGNALS:
    // Also after a disturbance that happens once.
    void disturbed();

private:
    void followStorm();

    std::unique_ptr<Transport> m_inner;
    Disturbances m_disturbances;
    Disturbances m_announced;
    std::unique_ptr<DisturbedStream, DeleteLater> m_stream;
    QTimer m_turn; // announces what the stream does by itself
};

}
