#pragma once

#include "api/host.h"
#include "host/session/ReadMarks.h"
#include "host/session/ServerConnection.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <vector>

namespace health {

// A call that the user did not want to try again, or one that came in the same turn of the event loop after such a
// call: what happened has been shown already.
class CallAbandoned : public ConnectionGone {
    using ConnectionGone::ConnectionGone;
};

// The session with the clinical server over one connection. A call whose answer is lost is offered for another try
// and sent again under its old number, over a new connection if need be; only when the user declines
// does it fail. Events reach their subscribers from the event loop, never inside a call.
class HostSession : public QObject, public Session {
    Q_OBJECT
public:
    struct SignedOn {
        long userNumber = 0;
        Text userName;
        long siteNumber = 0;
        Text siteName;
    };

    // Asks the user whether to try again; gets what happened. Where it says no, the call throws CallAbandoned, and so
    // do those that follow it before the event loop is reached again: the rest of the same load.
    using TryAgain = std::function<bool(const QString& reason)>;

    // The transport must outlive the session.
    HostSession(Transport& transport, int timeoutMilliseconds, TryAgain tryAgain);

    // Who may sign on, one line each: number ^ name ^ description. Throws Failure.
    Text users();
    // Signs on, after signing the old user off. Throws Failure, also for an unknown user.
    void signOn(const Text& userName);
    const SignedOn& signedOn() const { return m_signedOn; }

    bool isInCall() const { return m_inCall; }
    // Ends the call that waits as if the user had declined to try again. For what runs inside it.
    void giveUp();
    // How long a call may take in all, however much the server sends meanwhile; milliseconds.
    void setLongestCall(int milliseconds) { m_connection.setLongestCall(milliseconds); }
    // Heard again and again in a long call, with the milliseconds that it has lasted. True lets user input through:
    // whoever answers so keeps it from all but what may take it.
    std::function<bool(qint64 milliseconds)> onWait;
    void setObject(TextView progId, std::shared_ptr<HostObject> object) { m_objects[Text(progId)] = std::move(object); }
    // Where connect() gets the user's name from; empty when the user gave none.
    std::function<Text()> chooseUser;

    // Asks the server ahead for expected calls; off: each call by itself.
    bool usesHints = true;

    void expectCalls(std::span<const ExpectedCall> calls) override;
    Text callText(TextView name, TextView parameter) override;
    Text callList(TextView name, TextView parameter) override;
    void abortRequest(long) override { } // there are no asynchronous requests
    void registerEvent(TextView name, ICSS_SessionEvents& sink) override;
    void unregisterEvent(TextView name, ICSS_SessionEvents& sink) override;
    void raiseEvent(TextView name, TextView data) override;
    std::optional<Text> value(TextView key) const override;
    void setValue(TextView key, TextView value) override { m_values[Text(key)] = value; }
    bool isConnected() const override { return m_signedOn.userNumber != 0; }
    void connect(TextView server) override;
    std::shared_ptr<HostObject> object(TextView progId) override;

Q_SIGNALS:
    void statusChanged(const QString& text);
    void progressed(int percent, const QString& text);
    // The server can be reached, or not for now; may tell the same twice.
    void connectionChanged(bool connected);
    // A call is over, well or not.
    void callEnded();

private:
    // Marks the session as in a call for as long as it lives, and says when the call is over.
    class Call {
    public:
        explicit Call(HostSession& session)
            : m_session(session)
        {
            if (m_session.m_inCall)
                throw Failure(L"Another call is still running.");
            m_session.m_inCall = true;
            m_session.m_givenUp = false;
        }
        ~Call()
        {
            m_session.m_inCall = false;
            Q_EMIT m_session.callEnded();
        }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        HostSession& m_session;
    };

    struct SentAhead {
        long long number;
        Text name;
        Text parameter;
    };

    struct Subscription {
        Text name;
        ICSS_SessionEvents* sink;
        bool operator==(const Subscription&) const = default;
    };

    Text call(TextView name, TextView parameter);
    // What a request says of its use; a server of the first version would not understand it.
    Text purposeOf(TextView name, TextView parameter) const
    {
        return m_serverVersion < 2 ? Text() : m_marks.purposeOf(name, parameter);
    }
    long long numberOf(TextView name, TextView parameter);
    long long takeExpected(TextView name, TextView parameter);
    void dropExpected();
    void tellServer(TextView name, TextView parameter);
    template<typename Work>
    auto withRetries(Work work);
    bool wantsAnotherTry(const Text& reason);
    void noteDeclined(const Text& reason);
    void failAfterDeclined() const;
    QByteArray request(TextView name, TextView parameter);
    void openConnection();
    void openSession();
    void signOnConnection();
    bool isReady() const { return m_connection.isOpen() && m_onConnection; }
    void subscribe(TextView name);
    bool isSubscribed(TextView name) const;
    void queueEvent(Text name, Text data);
    void deliverQueued();
    void deliver(const Text& name, const Text& data);
    void tell(const Subscription& subscription, const Text& name, const Text& data);
    void reconnectQuietly();
    void tellMissedEvents();

    ServerConnection m_connection;
    const int m_timeout; // of the user's calls, milliseconds
    TryAgain m_tryAgain;
    Text m_token; // the session's name at the server
    long long m_lastNumber = 0;
    Text m_userName;
    SignedOn m_signedOn;
    int m_serverVersion = 1; // of the protocol that the server speaks over the open connection
    bool m_onConnection = false; // the open connection has been signed on
    std::vector<Subscription> m_subscriptions;
    std::set<Text> m_namesAtServer; // subscribed over the open connection
    std::deque<std::pair<Text, Text>> m_events;
    QTimer m_delivery;
    bool m_delivering = false;
    bool m_eventsMissed = false; // a connection was lost, and nobody has been told to read anew
    QTimer m_quietPause; // between two tries to connect again
    int m_nextPause; // milliseconds
    bool m_inCall = false; // from the first try to the end of the last
    bool m_givenUp = false; // the call that runs
    bool m_changeSent = false; // the call that runs changes data, and the server may have got it
    std::optional<Text> m_declined; // what the user did not want to try again, until the event loop is reached
    QTimer m_declineEnds;
    // The last change that was sent and then abandoned. Made again in time, it keeps its number, so that it is made
    // once.
    std::optional<SentAhead> m_unsettled;
    QDeadlineTimer m_unsettledUntil;
    std::deque<SentAhead> m_expected; // calls that were announced, in their order
    ReadMarks m_marks;
    std::map<Text, Text> m_values;
    std::map<Text, std::shared_ptr<HostObject>> m_objects;
};

}
