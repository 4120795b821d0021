#include "host/session/HostSession.h"

#include "api/Events.h"
#include "api/Utf8.h"
#include "host/session/Transport.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QUuid>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// Raised inside the host only; the server does not know them.
bool isLocal(TextView name)
{
    return name == RefreshEvent || name == StatusEvent || name == SavedEvent || name == DiscardedEvent
        || name == ConnectionEvent || name == TryNowEvent;
}

Text newToken() { return QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex()).toStdWString(); }

Text widenBytes(const QByteArray& utf8) { return widen({ utf8.data(), static_cast<std::size_t>(utf8.size()) }); }

// A reconnection without the user times out sooner than a call of the user: the window takes no input meanwhile.
constexpr int QuietTimeout = 5'000; // milliseconds
constexpr int ProtocolVersion = 2; // that the host speaks; servers of version 1 work, too

}

HostSession::HostSession(Transport& transport, int timeoutMilliseconds, TryAgain tryAgain)
    : m_connection(transport, timeoutMilliseconds, m_journal)
    , m_timeout(timeoutMilliseconds)
    , m_tryAgain(std::move(tryAgain))
    , m_token(newToken())
    , m_events([this] { return m_inCall; })
    , m_ahead(m_connection)
{
    m_connection.onEvent = [this](
                               const Answer& event) { m_events.queue(widenBytes(event.name), widenBytes(event.text)); };
    m_connection.onProgress = [this](int percent, const QString& text) { Q_EMIT progressed(percent, text); };
    m_connection.onDroppedFailure = [this](const QString& text) { Q_EMIT statusChanged(text); };
    transport.onWait = [this](qint64 milliseconds) { return onWait && onWait(milliseconds); };
    m_declineEnds.setSingleShot(true);
    connect(&m_declineEnds, &QTimer::timeout, this, [this] { m_declined.reset(); });
    connect(&m_events, &EventQueue::sinkFailed, this, &HostSession::statusChanged);
    connect(&m_reconnector, &Reconnector::due, this, &HostSession::reconnectQuietly);
    connect(
        &m_connection, &ServerConnection::lostWhileIdle, this, &HostSession::reconnectQuietly, Qt::QueuedConnection);
}

// --- Connection ---

void HostSession::openConnection()
{
    if (m_connection.isOpen())
        return;
    m_onConnection = false;
    m_namesAtServer.clear();
    m_connection.open();
}

// Restores the session over a new connection: the sign-on and all subscriptions.
void HostSession::openSession()
{
    if (isReady())
        return;
    if (m_userName.empty())
        throw Failure(L"Not signed on.");
    openConnection();
    try {
        signOnConnection();
        for (const Text& name : m_events.names())
            subscribe(name);
    } catch (const Failure&) {
        m_connection.close(); // a session is restored completely or not at all
        throw;
    }
    m_onConnection = true;
    // The subscribers have missed all events since the old connection was lost.
    m_eventsMissed = m_eventsMissed || !m_events.names().empty();
    m_declined.reset();
    m_reconnector.noteConnected();
    Q_EMIT connectionChanged(true);
    if (std::exchange(m_isAway, false))
        m_events.queue(Text(ConnectionEvent), L"");
}

void HostSession::signOnConnection()
{
    const Text reply =
        widenBytes(request(L"MEVHOST SIGNON", m_token + L"^" + m_userName + L"^" + std::to_wstring(ProtocolVersion)));
    const QStringList pieces = QString::fromStdWString(reply).split(u'^');
    if (pieces.size() < 4 || pieces[0].toLong() <= 0)
        throw Failure(pieces.value(1, u"The server refused the sign-on."_s).toStdWString());
    m_signedOn = { pieces[0].toLong(), pieces[1].toStdWString(), pieces[2].toLong(), pieces[3].toStdWString() };
    // A server that does not state its version speaks version 1.
    m_serverVersion = std::max(1, pieces.value(4).toInt());
}

QByteArray HostSession::request(TextView name, TextView parameter)
{
    return m_connection.exchange(++m_lastNumber, name, parameter);
}

template<typename Work>
auto HostSession::withRetries(Work work)
{
    const Call inCall(*this);
    failAfterDeclined();
    for (;;) {
        try {
            return work();
        } catch (const ConnectionLost& lost) {
            m_connection.close();
            if (wantsAnotherTry(lost.description()))
                continue;
            noteDeclined(lost.description());
            if (m_changeSent)
                throw CallAbandoned(lost.description()
                    + L" The change may or may not have been made. Check the record before you enter it again.");
            throw CallAbandoned(lost.description());
        }
    }
}

bool HostSession::wantsAnotherTry(const Text& reason)
{
    if (m_givenUp)
        return false;
    QString question = QString::fromStdWString(reason);
    if (m_changeSent)
        question += u" The change may or may not have been made. If you retry, it is made only once."_s;
    return m_tryAgain(question);
}

void HostSession::noteDeclined(const Text& reason)
{
    m_declined = reason;
    m_declineEnds.start(0);
    Q_EMIT connectionChanged(false);
    m_reconnector.noteFailedCall();
    reportPause();
}

void HostSession::failAfterDeclined() const
{
    if (m_declined)
        throw CallAbandoned(*m_declined);
}

void HostSession::giveUp()
{
    if (!m_inCall)
        return;
    m_givenUp = true;
    m_connection.giveUp();
}

Text HostSession::users()
{
    const Text list = widenBytes(withRetries([this] {
        openConnection();
        return request(L"MEVHOST USERS", L"");
    }));
    if (list.empty())
        throw Failure(
            L"No user may sign on to this server. Its administrator adds users with: phserver --data FOLDER --users "
            L"add LAST,FIRST");
    return list;
}

void HostSession::signOn(const Text& userName)
{
    if (isConnected()) {
        m_connection.close();
        m_token = newToken(); // another user must never receive the replies of this one
    }
    m_journal.setUnlocked(false); // the new user has not asked for patients' data
    m_userName = userName;
    m_marks = {};
    m_unsettled.forget();
    m_signedOn = {};
    m_values.clear();
    withRetries([this] { openSession(); });
}

void HostSession::connect(TextView)
{
    if (!m_userName.empty())
        return withRetries([this] { openSession(); });
    const Text userName = chooseUser ? chooseUser() : Text();
    if (userName.empty())
        throw Failure(L"Not signed on.");
    signOn(userName);
}

// Events are missed while the connection is lost, so it is reopened without asking the user.
void HostSession::reconnectQuietly()
{
    if (m_connection.isOpen() || m_inCall || m_userName.empty())
        return;
    Q_EMIT connectionChanged(false);
    if (m_isAway)
        m_events.deliver(Text(ConnectionEvent), L"0");
    if (m_reconnector.attempt([this] { openQuietly(); }))
        raiseMissedEvents();
    else
        reportPause();
}

void HostSession::reportPause()
{
    m_isAway = true;
    m_events.queue(Text(ConnectionEvent), std::to_wstring(m_reconnector.secondsLeft()));
}

void HostSession::openQuietly()
{
    m_connection.setTimeout(std::min(m_timeout, QuietTimeout));
    const auto usual = qScopeGuard([this] { m_connection.setTimeout(m_timeout); });
    const Call inCall(*this);
    openSession();
}

// Nobody knows which events were missed, so the panels reload everything.
void HostSession::raiseMissedEvents()
{
    if (std::exchange(m_eventsMissed, false))
        m_events.queue(Text(RefreshEvent), L"");
}

// --- Calls ---

Text HostSession::callText(TextView name, TextView parameter) { return call(name, parameter); }

Text HostSession::callList(TextView name, TextView parameter) { return call(name, parameter); }

Text HostSession::call(TextView name, TextView parameter)
{
    failAfterDeclined();
    const long long last = m_lastNumber;
    const long long number = numberOf(name, parameter); // the same for every try: the server executes it once
    const bool changes = changesRecords(name);
    const QScopedValueRollback changeSent(m_changeSent, changes && number <= last); // an unsettled change
    try {
        const QByteArray reply = withRetries([&] {
            openSession();
            if (m_connection.hasSent(number))
                return m_connection.receive(number);
            m_changeSent = changes;
            return m_connection.exchange(number, name, parameter, purposeOf(name, parameter));
        });
        m_marks.noteReply(number, name, parameter);
        raiseMissedEvents();
        return widenBytes(reply);
    } catch (const CallAbandoned&) {
        m_journal.noteGivenUp(number);
        if (m_changeSent)
            m_unsettled.keep({ number, Text(name), Text(parameter) });
        throw;
    }
}

// The number of an unsettled change or of a call that was sent ahead, else a new one.
long long HostSession::numberOf(TextView name, TextView parameter)
{
    if (changesRecords(name)) {
        if (const auto number = m_unsettled.take(name, parameter)) {
            m_ahead.discard();
            return *number;
        }
    }
    if (const auto number = m_ahead.take(name, parameter))
        return *number;
    return ++m_lastNumber;
}

void HostSession::expectCalls(std::span<const ExpectedCall> calls)
{
    m_ahead.discard();
    m_marks.announce(calls);
    if (!usesHints || m_inCall || !isReady())
        return;
    try {
        for (const ExpectedCall& call : calls) {
            m_ahead.send(
                { ++m_lastNumber, Text(call.name), Text(call.parameter) }, purposeOf(call.name, call.parameter));
            m_journal.noteAhead();
        }
    } catch (const Failure&) {
        // The calls themselves will fail and report it.
    }
}

// Sends a call whose reply carries no information. The server executes it before the calls that follow.
void HostSession::sendWithoutReply(TextView name, TextView parameter)
{
    const long long number = ++m_lastNumber;
    m_connection.send(number, name, parameter);
    m_connection.drop(number);
}

// --- Events ---

// Subscribes a name over the open connection, once.
void HostSession::subscribe(TextView name)
{
    if (isLocal(name) || m_namesAtServer.contains(Text(name)))
        return;
    sendWithoutReply(L"MEVHOST SUBSCRIBE", name);
    m_namesAtServer.emplace(name);
}

void HostSession::registerEvent(TextView name, ICSS_SessionEvents& sink)
{
    // Registered first: if the server is gone, the next connection subscribes the name.
    if (!m_events.add(name, sink))
        return;
    if (isLocal(name))
        return;
    try {
        if (isReady())
            return subscribe(name);
    } catch (const ConnectionLost&) {
        // The next connection subscribes it.
    }
    withRetries([&] { openSession(); });
}

void HostSession::unregisterEvent(TextView name, ICSS_SessionEvents& sink)
{
    const bool removed = m_events.remove(name, sink);
    const bool last = removed && !m_events.hasSubscriber(name) && m_namesAtServer.contains(Text(name));
    // The subscriptions of a lost connection have ended with it.
    if (!last || !isReady())
        return;
    try {
        m_namesAtServer.erase(Text(name));
        sendWithoutReply(L"MEVHOST UNSUBSCRIBE", name);
    } catch (const ConnectionLost&) {
        // No request of the user has failed.
        QMetaObject::invokeMethod(this, &HostSession::reconnectQuietly, Qt::QueuedConnection);
    }
}

void HostSession::raiseEvent(TextView name, TextView data)
{
    const QString text = QString::fromStdWString(Text(data));
    if (name == StatusEvent)
        Q_EMIT statusChanged(text);
    else if (name == SavedEvent)
        Q_EMIT recordSaved(text);
    else if (name == DiscardedEvent)
        Q_EMIT entryDiscarded(text);
    else if (name == TryNowEvent)
        QMetaObject::invokeMethod(&m_reconnector, &Reconnector::tryNow, Qt::QueuedConnection);
    if (m_inCall)
        m_events.queue(Text(name), Text(data));
    else
        m_events.deliver(Text(name), Text(data));
}

// --- Values and objects ---

std::optional<Text> HostSession::value(TextView key) const
{
    const auto found = m_values.find(Text(key));
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

std::shared_ptr<HostObject> HostSession::object(TextView progId)
{
    const auto found = m_objects.find(Text(progId));
    return found == m_objects.end() ? nullptr : found->second;
}

}
