#pragma once

#include "api/Failure.h"
#include "host/session/FrameCodec.h"

#include <QObject>

#include <functional>
#include <map>

namespace health {

class Transport;

// The stream to the server is gone or out of step; a call may be tried again over a new one.
class ConnectionLost : public Failure {
    using Failure::Failure;
};

// Requests and answers over a transport. Events that come in are handed on as they are read.
class ServerConnection : public QObject {
    Q_OBJECT
public:
    // The transport must outlive the connection. The time-out counts from the last byte that came; however much comes,
    // no call lasts longer than the longest call.
    ServerConnection(Transport& transport, int timeoutMilliseconds);

    bool isOpen() const { return m_open; }
    // Throws ConnectionLost.
    void open();
    void close();
    // How long a server may be silent, from now on; milliseconds.
    void setTimeout(int milliseconds) { m_timeout = milliseconds; }
    // How long a call may take in all, from now on; milliseconds.
    void setLongestCall(int milliseconds) { m_longestCall = milliseconds; }
    // Makes the call that waits end as one whose connection was lost. For what runs inside it; without one it does
    // nothing.
    void giveUp();

    // Sends a request, with what it is for; its answer is received later, or dropped when it comes. Throws
    // ConnectionLost.
    void send(long long number, TextView name, TextView parameter, TextView purpose = {});
    // The request was sent over the open connection and its answer was not received yet.
    bool hasSent(long long number) const { return m_sent.contains(number); }
    // Waits for the reply (UTF-8) to a request that was sent. In a long call the window is painted and the pointer is
    // busy, but user input (see Transport::onWait) and timers wait: nothing else begins meanwhile. Throws
    // ConnectionLost where there is no answer, Failure with the server's text where the call failed there.
    QByteArray receive(long long number);
    QByteArray exchange(long long number, TextView name, TextView parameter, TextView purpose = {})
    {
        send(number, name, parameter, purpose);
        return receive(number);
    }
    // Nobody waits for the answer any more; a failure is told all the same.
    void drop(long long number);

    std::function<void(const Answer&)> onEvent;
    // A request failed whose answer was dropped.
    std::function<void(const QString& text)> onDroppedFailure;
    std::function<void(int percent, const QString& text)> onProgress;

Q_SIGNALS:
    // The server has gone while no call was waiting.
    void lostWhileIdle();

private:
    // What becomes of the answer to a request that was sent.
    struct Sent {
        bool isDropped = false;
        std::optional<Answer> answer; // came before anybody waited for it
    };

    Answer waitFor(long long number);
    std::optional<Answer> nextAnswer();
    void sort(Answer answer);
    void keep(Answer answer);
    void tellProgress();
    bool readMore();
    void keepWithinLimits(qint64 call, qint64 silence);
    void readIdle();
    auto readIdleLater();
    [[noreturn]] void lose(const QString& reason);

    Transport& m_transport;
    int m_timeout;
    int m_longestCall = 600'000;
    FrameReader m_reader;
    std::map<long long, Sent> m_sent; // by number
    bool m_open = false;
    bool m_waiting = false;
    bool m_answered = false; // a request, over the open connection
    std::optional<Answer> m_progress; // the latest, not told yet
};

}
