#pragma once

#include "api/host.h"
#include "host/session/CallJournal.h"
#include "host/session/CallsAhead.h"
#include "host/session/EventQueue.h"
#include "host/session/ReadMarks.h"
#include "host/session/Reconnector.h"
#include "host/session/ServerConnection.h"
#include "host/session/UnsettledChange.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <set>

namespace health {

// A call that the user declined to retry, or one that follows it in the same turn of the event loop. The user has seen
// the error.
class CallAbandoned : public ConnectionGone {
    using ConnectionGone::ConnectionGone;
};

// The session with the clinical server over one connection. If the reply to a call is lost, the user may retry: the
// call is sent again under its number, over a new connection if necessary, and fails only when the user declines.
// Events reach their subscribers from the event loop, never inside a call.
class HostSession : public QObject, public Session {
    Q_OBJECT
public:
    struct SignedOn {
        long userNumber = 0;
        Text userName;
        long siteNumber = 0;
        Text siteName;
    };

    // Shows the error and asks the user whether to retry. If the user declines, the call throws CallAbandoned, and so
    // do the calls that follow before the event loop runs again: the rest of the same load.
    using TryAgain = std::function<bool(const QString& reason)>;

    // The transport must outlive the session.
    HostSession(Transport& transport, int timeoutMilliseconds, TryAgain tryAgain);

    // The users who may sign on, one per line: number ^ name ^ description. Throws Failure.
    Text users();
    // Signs on, after signing the old user off. Throws Failure, also for an unknown user.
    void signOn(const Text& userName);
    const SignedOn& signedOn() const { return m_signedOn; }
    // What passed between this session and the server. A sign-on locks it.
    CallJournal& journal() { return m_journal; }

    bool isInCall() const { return m_inCall; }
    // The running call changes records.
    bool isSaving() const { return m_inCall && m_changeSent; }
    // Ends the running call as if the user had declined to retry; called from inside it.
    void giveUp();
    // The longest time that a call may take, even while the server keeps sending; milliseconds.
    void setLongestCall(int milliseconds) { m_connection.setLongestCall(milliseconds); }
    // Called repeatedly during a long call, with the milliseconds that it has lasted. Returning true lets user input
    // through; the callee must then block input to everything that must not receive it.
    std::function<bool(qint64 milliseconds)> onWait;
    void setObject(TextView progId, std::shared_ptr<HostObject> object) { m_objects[Text(progId)] = std::move(object); }
    // Asks the user for a name in connect(); an empty text means that no user was chosen.
    std::function<Text()> chooseUser;

    // Sends expected calls ahead; if false, each call is sent when it is made.
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
    // A user is signed on. Intended: also true while the connection is lost, since it is reopened for that user.
    bool isConnected() const override { return m_signedOn.userNumber != 0; }
    using QObject::connect; // beside the operation of the same name
    void connect(TextView server) override;
    std::shared_ptr<HostObject> object(TextView progId) override;

Q_SIGNALS:
    void statusChanged(const QString& text);
    // The panel has saved a record: SAVED.
    void recordSaved(const QString& what);
    // The panel offers to bring an entry back, or with an empty text does so no longer: DISCARDED.
    void entryDiscarded(const QString& offer);
    void progressed(int percent, const QString& text);
    // The server became reachable or unreachable; the same state may be signalled twice.
    void connectionChanged(bool connected);
    // A call has ended, successfully or not.
    void callEnded();

private:
    // Marks the session as in a call during its lifetime, then signals the end of the call.
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

    Text call(TextView name, TextView parameter);
    // The purpose that a request states; empty for a server of protocol version 1, which would not understand it.
    Text purposeOf(TextView name, TextView parameter) const
    {
        return m_serverVersion < 2 ? Text() : m_marks.purposeOf(name, parameter);
    }
    long long numberOf(TextView name, TextView parameter);
    void sendWithoutReply(TextView name, TextView parameter);
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
    void reconnectQuietly();
    void openQuietly();
    void raiseMissedEvents();
    void reportPause();

    CallJournal m_journal;
    ServerConnection m_connection;
    const int m_timeout; // of the user's calls, milliseconds
    TryAgain m_tryAgain;
    Text m_token; // the session's name at the server
    long long m_lastNumber = 0;
    Text m_userName;
    SignedOn m_signedOn;
    int m_serverVersion = 1; // of the protocol that the server speaks over the open connection
    bool m_onConnection = false; // the open connection has been signed on
    bool m_inCall = false; // from the first try to the end of the last
    bool m_givenUp = false; // the user has abandoned the running call
    bool m_changeSent = false; // the running call changes data, and the server may have received it
    EventQueue m_events;
    std::set<Text> m_namesAtServer; // subscribed over the open connection
    bool m_eventsMissed = false; // a connection was lost, and no subscriber has been asked to reload yet
    Reconnector m_reconnector;
    bool m_isAway = false; // the subscribers of CONNECTION know that the connection is lost
    std::optional<Text> m_declined; // the error that the user declined to retry, until the event loop runs again
    QTimer m_declineEnds;
    UnsettledChange m_unsettled;
    CallsAhead m_ahead;
    ReadMarks m_marks;
    std::map<Text, Text> m_values;
    std::map<Text, std::shared_ptr<HostObject>> m_objects;
};

}
