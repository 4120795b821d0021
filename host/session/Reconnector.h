#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace health {

// Decides when a lost connection is opened again without asking the user: the pause between attempts doubles after each
// failure.
class Reconnector : public QObject {
    Q_OBJECT
public:
    explicit Reconnector(int firstPauseMilliseconds = 10'000);

    // Calls `open`, which throws Failure if it fails. False after a failure, and during a pause, when `open` is not
    // called.
    bool attempt(const std::function<void()>& open);
    // A call of the user has failed: the next attempt comes after a pause.
    void noteFailedCall();
    // The connection is open again, however that happened: resets the pause.
    void noteConnected();
    // The user asks for an attempt: ends the pause.
    void tryNow();
    // Until the next attempt, rounded up; 0 if there is no pause.
    int secondsLeft() const { return m_pause.isActive() ? (m_pause.remainingTime() + 999) / 1000 : 0; }

Q_SIGNALS:
    // The pause is over.
    void due();

private:
    const int m_firstPause; // milliseconds
    int m_nextPause;
    QTimer m_pause;
};

}
