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
    // The open stream, else null. Owned by the transport.
    virtual QIODevice* device() = 0;
    // True until the other side closes the stream.
    virtual bool isAlive() const = 0;
    // The server has the clock of this machine.
    virtual bool hasLocalClock() const { return false; }
    // Why the stream ended, a sentence for the user.
    virtual QString endReason() const = 0;

    // Called repeatedly while opening or a call takes long, with the milliseconds that it has lasted. Returning true
    // lets user input through; the callee must then block input to everything that must not receive it.
    std::function<bool(qint64 milliseconds)> onWait;
    // Called during a wait: paints the window, but starts nothing else. X11ExcludeTimers also holds back timers, so
    // that none starts a second call; Qt declares the flag without documenting it, and only its Unix dispatchers honour
    // it.
    void letWindowLive(qint64 milliseconds)
    {
        const bool takesInput = onWait && onWait(milliseconds);
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers
            | (takesInput ? QEventLoop::ProcessEventsFlags() : QEventLoop::ExcludeUserInputEvents));
    }
    // Ends the current wait; called from inside it.
    void giveUp() { m_givenUp = true; }
    bool isGivenUp() const { return m_givenUp; }
    void beginWait() { m_givenUp = false; }

    // A slot of a stream's own signal may close the stream, which must not be deleted before that signal returns.
    struct DeleteLater {
        void operator()(QObject* stream) const { stream->deleteLater(); }
    };

Q_SIGNALS:
    // The other side has gone, or has sent something, outside a wait.
    void ended();
    void readyRead();

private:
    bool m_givenUp = false;
};

}
