#pragma once

#include <QCoreApplication>
#include <QObject>

#include <functional>

class QIODevice;

namespace health {

// A byte stream to a server: a child process, or a connection over the network.
class Transport : public QObject {
    Q_OBJECT
public:
    // Opens the stream; throws Failure with a description. Closes an old one first.
    virtual void open() = 0;
    virtual void close() = 0;
    // The stream while it is open, else null. Owned by the transport.
    virtual QIODevice* device() = 0;
    // True until the other side has gone.
    virtual bool isAlive() const = 0;
    // Why the stream ended, a sentence for the user.
    virtual QString endReason() const = 0;

    // Heard again and again while opening, or a call, takes long; with the milliseconds that it has taken. True lets
    // user input through: whoever answers so keeps it from all but what may take it.
    std::function<bool(qint64 milliseconds)> onWait;
    // For whoever waits: paints the window, and lets nothing else begin.
    void letWindowLive(qint64 milliseconds)
    {
        const bool takesInput = onWait && onWait(milliseconds);
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers
            | (takesInput ? QEventLoop::ProcessEventsFlags() : QEventLoop::ExcludeUserInputEvents));
    }
    // Ends the wait that goes on. For what runs inside it.
    void giveUp() { m_givenUp = true; }
    bool isGivenUp() const { return m_givenUp; }
    void beginWait() { m_givenUp = false; }

    // A stream may be closed by what hears of its end: it does not survive its deletion in its own signal.
    struct DeleteLater {
        void operator()(QObject* stream) const { stream->deleteLater(); }
    };

Q_SIGNALS:
    // The other side has gone, or sent something, while nobody waited for it.
    void ended();
    void readyRead();

private:
    bool m_givenUp = false;
};

}
