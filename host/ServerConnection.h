#pragma once

#include "host/FrameCodec.h"
#include "platform/Failure.h"

#include <QObject>

#include <functional>

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
    // The transport must outlive the connection. The time-out counts from the last byte that came.
    ServerConnection(Transport& transport, int timeoutMilliseconds);

    bool isOpen() const { return m_open; }
    // Throws ConnectionLost.
    void open();
    void close();

    // Sends a request and waits for its reply (UTF-8). In a long call the window is painted and the pointer is busy,
    // but user input and timers wait: nothing else begins meanwhile. Throws ConnectionLost where there is no answer,
    // Failure with the server's text where the call failed there.
    QByteArray exchange(long long number, TextView name, TextView parameter);
    bool isWaiting() const { return m_waiting; }

    std::function<void(const Answer&)> onEvent;
    std::function<void(int percent, const QString& text)> onProgress;

Q_SIGNALS:
    // The server has gone while no call was waiting.
    void lostWhileIdle();

private:
    QByteArray waitFor(long long number);
    std::optional<Answer> nextAnswer();
    std::optional<QByteArray> replyIn(const Answer& answer, long long number);
    bool readMore();
    void readIdle();
    [[noreturn]] void lose(const QString& reason);

    Transport& m_transport;
    int m_timeout;
    FrameReader m_reader;
    bool m_open = false;
    bool m_waiting = false;
};

}
