#pragma once

#include "api/Failure.h"
#include "host/session/FrameCodec.h"

#include <QObject>

#include <functional>
#include <map>

namespace health {

class CallJournal;
class Transport;

// The stream to the server is lost or out of sync; a call may be retried over a new one.
class ConnectionLost : public Failure {
    using Failure::Failure;
};

// Requests and answers over a transport. Incoming events are passed on as they are read.
class ServerConnection : public QObject {
    Q_OBJECT
public:
    // Transport and journal must outlive the connection. The time-out starts again with each byte received;
    // setLongestCall limits a call even while the server keeps sending.
    ServerConnection(Transport& transport, int timeoutMilliseconds, CallJournal& journal);

    bool isOpen() const { return m_open; }
    // Throws ConnectionLost.
    void open();
    void close();
    // How long the server may be silent; milliseconds.
    void setTimeout(int milliseconds) { m_timeout = milliseconds; }
    // How long a call may take in total; milliseconds.
    void setLongestCall(int milliseconds) { m_longestCall = milliseconds; }
    // Ends the waiting call as if its connection were lost. Called from inside the call; without one it does nothing.
    void giveUp();

    // Sends a request with its purpose. Its answer must be received later, or dropped. Throws ConnectionLost.
    void send(long long number, TextView name, TextView parameter, TextView purpose = {});
    // The request was sent over the open connection, and its answer has not been received yet.
    bool hasSent(long long number) const { return m_sent.contains(number); }
    // Waits for the reply (UTF-8) to a request that was sent. During a long call the window is painted and the pointer
    // is busy, but user input (see Transport::onWait) and timers are held back: nothing else starts meanwhile. Throws
    // ConnectionLost if there is no answer, Failure with the server's text if the call failed there.
    QByteArray receive(long long number);
    QByteArray exchange(long long number, TextView name, TextView parameter, TextView purpose = {})
    {
        send(number, name, parameter, purpose);
        return receive(number);
    }
    // Discards the reply when it arrives; failures still reach onDroppedFailure.
    void drop(long long number);

    std::function<void(const Answer&)> onEvent;
    // A request whose answer was dropped has failed.
    std::function<void(const QString& text)> onDroppedFailure;
    std::function<void(int percent, const QString& text)> onProgress;

Q_SIGNALS:
    // The connection was lost while no call was waiting.
    void lostWhileIdle();

private:
    // A request that was sent and whose caller has not received the answer yet.
    struct Sent {
        bool isDropped = false;
        std::optional<Answer> answer; // arrived before receive()
    };

    Answer waitFor(long long number);
    std::optional<Answer> nextAnswer();
    void sort(Answer answer);
    void keep(Answer answer);
    void reportProgress();
    bool readMore();
    void keepWithinLimits(qint64 call, qint64 silence);
    void readIdle();
    auto readIdleLater();
    void closeLost();
    [[noreturn]] void lose(const QString& reason);

    Transport& m_transport;
    CallJournal& m_journal;
    int m_timeout;
    int m_longestCall = 600'000;
    FrameReader m_reader;
    std::map<long long, Sent> m_sent; // by number
    bool m_open = false;
    bool m_waiting = false;
    bool m_answered = false; // the open connection has answered a request
    std::optional<Answer> m_progress; // the latest, not reported yet
};

}
