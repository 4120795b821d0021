#pragma once

#include "api/Text.h"
#include "host/session/FrameCodec.h"

#include <QElapsedTimer>
#include <QObject>

#include <deque>
#include <map>
#include <optional>

namespace health {

// A line of the call journal.
struct JournalEntry {
    enum class Kind {
        Call,
        Event,
        Connection, // opened, lost, ...
    };
    enum class Result {
        Waiting,
        Answered,
        Refused, // the server's reply is "-1^..."
        Failed, // the server could not run the call
        ConnectionLost,
        GivenUp, // the connection was lost, and the user declined to retry
    };

    Kind kind = Kind::Call;
    qint64 id = 0; // increases by one from entry to entry
    qint64 time = 0; // milliseconds since 1970
    QString name; // of an event without its numbers; what happened to the connection
    Result result = Result::Waiting;
    std::optional<qint64> microseconds; // from sending the request to reading the whole reply
    qsizetype sent = 0; // bytes
    qsizetype received = 0; // bytes
    bool isAhead = false; // sent before the call was made
    bool isRepeated = false; // the request had been sent before, and its reply was lost
    int times = 1; // of equal events in a row

    bool isSlow() const;
};

// What the user unlocks: patients' data.
struct JournalContent {
    QString parameter; // of an event, its name
    QString reply; // of an event, its data
};

// What passes between the session and the server, for those who look after the program. In memory only, and without
// patients' data: no parameters, no replies, no numbers of patients in the names of events. The user may unlock
// parameters and replies; they are then kept for new calls, until locked again.
class CallJournal : public QObject {
    Q_OBJECT
public:
    static constexpr std::size_t Most = 1000; // entries; the oldest are dropped
    // At this duration people notice that the program keeps them waiting.
    static constexpr qint64 SlowMicroseconds = 1'000'000;
    // Letters that are kept of a parameter or reply.
    static constexpr std::size_t LongestContent = 20'000;

    CallJournal() { m_clock.start(); }

    const std::deque<JournalEntry>& entries() const { return m_entries; }
    // The parameter and reply of an entry; null if they were not kept.
    const JournalContent* content(qint64 id) const;
    void clear();

    bool isUnlocked() const { return m_unlocked; }
    // Locking drops the parameters and replies that were kept.
    void setUnlocked(bool unlocked);

    // Of the calls among the entries; microseconds.
    struct Sums {
        std::size_t calls = 0;
        std::size_t failed = 0; // refused, failed, lost or given up
        std::size_t slow = 0;
        std::optional<qint64> median;
        std::optional<qint64> slowest;
    };
    Sums sums() const;

    // --- What the session reports ---

    void noteOpened();
    void noteNotOpened();
    // The other side has gone or the stream is out of sync: all waiting calls are lost.
    void noteLost();
    // This side has closed the connection.
    void noteClosed();
    void noteSent(long long number, TextView name, TextView parameter, qsizetype bytes);
    // The latest request was sent before its call was made.
    void noteAhead();
    // A reply or failure.
    void noteAnswer(const Answer& answer);
    void noteEvent(const Answer& event);
    // The user has declined to retry the lost call.
    void noteGivenUp(long long number);

Q_SIGNALS:
    // Entries were added, changed or dropped. Emitted for each, and inside calls.
    void changed();

private:
    // A call among the entries.
    struct Request {
        qint64 id;
        long long number;
        qint64 sentAt; // nanoseconds
    };

    JournalEntry& add(JournalEntry::Kind kind, QString name);
    Request* latest(long long number);
    JournalEntry& entryOf(const Request& request)
    {
        return m_entries[static_cast<std::size_t>(request.id - m_entries.front().id)];
    }
    void endWaiting();
    void noteConnection(const QString& what);

    std::deque<JournalEntry> m_entries;
    std::map<qint64, JournalContent> m_contents; // by the entry's id, only while unlocked
    std::deque<Request> m_requests; // of the calls among the entries, in their order
    qint64 m_nextId = 1;
    bool m_unlocked = false;
    QElapsedTimer m_clock;
};

// An event's name without numbers of patients: "VXR.12.VELD" as "VXR.*.VELD".
QString nameWithoutNumbers(const QByteArray& event);

}
