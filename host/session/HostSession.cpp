#include "host/session/HostSession.h"

#include "api/Events.h"
#include "api/Utf8.h"
#include "host/session/Transport.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace health {

namespace {

// Raised inside the host only; the server knows nothing of them.
bool isLocal(TextView name) { return name == RefreshEvent || name == StatusEvent; }

Text newToken() { return QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex()).toStdWString(); }

Text widenBytes(const QByteArray& utf8) { return widen({ utf8.data(), static_cast<std::size_t>(utf8.size()) }); }

// Between two tries to connect again without a word; twice as long after each try that failed.
constexpr int FirstPause = 10'000; // milliseconds
constexpr int LongestPause = 320'000;
// The window takes no input meanwhile, so such a try gives up sooner than a call that the user made.
constexpr int QuietTimeout = 5'000;
constexpr int ProtocolVersion = 2; // that the host speaks; it works with servers of 1, too
constexpr int UnsettledTime = 600'000; // milliseconds
// More of them are replaced by one order to reload.
constexpr std::size_t MostEvents = 1000;
constexpr int LongestDelivery = 50; // milliseconds of one turn

}

HostSession::HostSession(Transport& transport, int timeoutMilliseconds, TryAgain tryAgain)
    : m_connection(transport, timeoutMilliseconds)
    , m_timeout(timeoutMilliseconds)
    , m_tryAgain(std::move(tryAgain))
    , m_token(newToken())
    , m_nextPause(FirstPause)
{
    m_connection.onEvent = [this](const Answer& event) { queueEvent(widenBytes(event.name), widenBytes(event.text)); };
    m_connection.onProgress = [this](int percent, const QString& text) { Q_EMIT progressed(percent, text); };
    m_connection.onDroppedFailure = [this](const QString& text) { Q_EMIT statusChanged(text); };
    transport.onWait = [this](qint64 milliseconds) { return onWait && onWait(milliseconds); };
    m_declineEnds.setSingleShot(true);
    QObject::connect(&m_declineEnds, &QTimer::timeout, this, [this] { m_declined.reset(); });
    m_delivery.setSingleShot(true);
    m_quietPause.setSingleShot(true);
    QObject::connect(&m_quietPause, &QTimer::timeout, this, &HostSession::reconnectQuietly);
    QObject::connect(&m_delivery, &QTimer::timeout, this, &HostSession::deliverQueued);
    QObject::connect(
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

// Makes the connection what the old one was: signed on, with all subscriptions.
void HostSession::openSession()
{
    if (isReady())
        return;
    if (m_userName.empty())
        throw Failure(L"Nobody has signed on.");
    openConnection();
    try {
        signOnConnection();
        for (const Subscription& subscription : m_subscriptions)
            subscribe(subscription.name);
    } catch (const Failure&) {
        m_connection.close(); // never half a session
        throw;
    }
    m_onConnection = true;
    // What happened since the old connection went was told to nobody.
    m_eventsMissed = m_eventsMissed || !m_subscriptions.empty();
    m_declined.reset();
    m_nextPause = FirstPause;
    if (m_quietPause.remainingTime() > FirstPause)
        m_quietPause.start(FirstPause);
    Q_EMIT connectionChanged(true);
}

void HostSession::signOnConnection()
{
    const Text reply =
        widenBytes(request(L"MEVHOST SIGNON", m_token + L"^" + m_userName + L"^" + std::to_wstring(ProtocolVersion)));
    const QStringList pieces = QString::fromStdWString(reply).split(u'^');
    if (pieces.size() < 4 || pieces[0].toLong() <= 0)
        throw Failure(pieces.value(1, QStringLiteral("The server did not take the sign-on.")).toStdWString());
    m_signedOn = { pieces[0].toLong(), pieces[1].toStdWString(), pieces[2].toLong(), pieces[3].toStdWString() };
    // A server that does not name its version is of the first.
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
                    + L" The change may have been made or not. Look at the record before you enter it again.");
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
        question += tr(" The change may have been made or not. Trying again makes it once.");
    return m_tryAgain(question);
}

void HostSession::noteDeclined(const Text& reason)
{
    m_declined = reason;
    m_declineEnds.start(0);
    Q_EMIT connectionChanged(false);
    if (!m_quietPause.isActive())
        m_quietPause.start(m_nextPause);
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
            L"The server knows nobody who could sign on here. Its administrator adds users with: phserver --data "
            L"FOLDER --users add LAST,FIRST");
    return list;
}

void HostSession::signOn(const Text& userName)
{
    if (isConnected()) {
        m_connection.close();
        m_token = newToken(); // another user never gets the answers of this one
    }
    m_userName = userName;
    m_marks = {};
    m_unsettled.reset();
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
        throw Failure(L"Nobody has signed on.");
    signOn(userName);
}

// Without a connection events would be missed: it is tried without a word, now and then.
void HostSession::reconnectQuietly()
{
    if (m_connection.isOpen() || m_inCall || m_userName.empty())
        return;
    Q_EMIT connectionChanged(false);
    if (m_quietPause.isActive())
        return;
    m_connection.setTimeout(std::min(m_timeout, QuietTimeout));
    const auto usual = qScopeGuard([this] { m_connection.setTimeout(m_timeout); });
    try {
        const Call inCall(*this);
        openSession();
    } catch (const Failure&) {
        m_quietPause.start(m_nextPause);
        m_nextPause = std::min(m_nextPause * 2, LongestPause);
        return;
    }
    m_quietPause.start(FirstPause); // a server that ends again and again is left alone for so long
    tellMissedEvents();
}

// Nobody knows what was missed: the panels read all anew.
void HostSession::tellMissedEvents()
{
    if (std::exchange(m_eventsMissed, false))
        queueEvent(Text(RefreshEvent), L"");
}

// --- Calls ---

Text HostSession::callText(TextView name, TextView parameter) { return call(name, parameter); }

Text HostSession::callList(TextView name, TextView parameter) { return call(name, parameter); }

Text HostSession::call(TextView name, TextView parameter)
{
    failAfterDeclined();
    const long long last = m_lastNumber;
    const long long number = numberOf(name, parameter); // the same for every try, so that the server does it once
    const bool changes = changesRecords(name);
    const QScopedValueRollback changeSent(m_changeSent, changes && number <= last); // then it is an unsettled one
    try {
        const QByteArray reply = withRetries([&] {
            openSession();
            if (m_connection.hasSent(number))
                return m_connection.receive(number);
            m_changeSent = changes;
            return m_connection.exchange(number, name, parameter, purposeOf(name, parameter));
        });
        m_marks.noteReply(number, name, parameter);
        tellMissedEvents();
        return widenBytes(reply);
    } catch (const CallAbandoned&) {
        if (m_changeSent) {
            m_unsettled = { number, Text(name), Text(parameter) };
            m_unsettledUntil.setRemainingTime(UnsettledTime);
        }
        throw;
    }
}

// A change whose fate is not known is made again under its old number. After another change, or much later when others
// may have changed the record, it is a new one.
long long HostSession::numberOf(TextView name, TextView parameter)
{
    if (!changesRecords(name))
        return takeExpected(name, parameter);
    const auto unsettled = std::exchange(m_unsettled, std::nullopt);
    if (!unsettled || m_unsettledUntil.hasExpired() || unsettled->name != name || unsettled->parameter != parameter)
        return takeExpected(name, parameter);
    dropExpected();
    return unsettled->number;
}

// --- Calls that are announced ---

void HostSession::expectCalls(std::span<const ExpectedCall> calls)
{
    dropExpected();
    m_marks.announce(calls);
    if (!usesHints || m_inCall || !isReady())
        return;
    try {
        for (const ExpectedCall& call : calls) {
            const long long number = ++m_lastNumber;
            m_connection.send(number, call.name, call.parameter, purposeOf(call.name, call.parameter));
            m_expected.push_back({ number, call.name, call.parameter });
        }
    } catch (const Failure&) {
        // The calls themselves will meet it, and tell.
    }
}

// The number of a call: that under which it was sent ahead, else a new one.
long long HostSession::takeExpected(TextView name, TextView parameter)
{
    if (!m_expected.empty() && m_expected.front().name == name && m_expected.front().parameter == parameter) {
        const long long number = m_expected.front().number;
        m_expected.pop_front();
        return number;
    }
    dropExpected();
    return ++m_lastNumber;
}

void HostSession::dropExpected()
{
    for (const SentAhead& call : std::exchange(m_expected, {}))
        m_connection.drop(call.number);
}

// Sends a call whose reply says nothing; the calls that follow come after it.
void HostSession::tellServer(TextView name, TextView parameter)
{
    const long long number = ++m_lastNumber;
    m_connection.send(number, name, parameter);
    m_connection.drop(number);
}

// --- Events ---

bool HostSession::isSubscribed(TextView name) const
{
    return std::any_of(
        m_subscriptions.begin(), m_subscriptions.end(), [&](const Subscription& s) { return s.name == name; });
}

// Subscribes a name over the open connection, once.
void HostSession::subscribe(TextView name)
{
    if (isLocal(name) || m_namesAtServer.contains(Text(name)))
        return;
    tellServer(L"MEVHOST SUBSCRIBE", name);
    m_namesAtServer.emplace(name);
}

void HostSession::registerEvent(TextView name, ICSS_SessionEvents& sink)
{
    const Subscription subscription { Text(name), &sink };
    if (std::find(m_subscriptions.begin(), m_subscriptions.end(), subscription) != m_subscriptions.end())
        return;
    // First here: should the server be gone, the next connection subscribes it.
    m_subscriptions.push_back(subscription);
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
    const auto removed = std::erase(m_subscriptions, Subscription { Text(name), &sink });
    const bool last = removed > 0 && !isSubscribed(name) && m_namesAtServer.contains(Text(name));
    // A connection that is gone has taken its subscriptions along.
    if (!last || !isReady())
        return;
    try {
        m_namesAtServer.erase(Text(name));
        tellServer(L"MEVHOST UNSUBSCRIBE", name);
    } catch (const ConnectionLost&) {
        Q_EMIT m_connection.lostWhileIdle(); // nothing that the user wanted has failed
    }
}

void HostSession::raiseEvent(TextView name, TextView data)
{
    if (name == StatusEvent)
        Q_EMIT statusChanged(QString::fromStdWString(Text(data)));
    if (m_inCall)
        queueEvent(Text(name), Text(data));
    else
        deliver(Text(name), Text(data));
}

void HostSession::queueEvent(Text name, Text data)
{
    auto event = std::pair(std::move(name), std::move(data));
    if (m_events.size() >= MostEvents) {
        m_events.clear();
        event = { Text(RefreshEvent), L"" };
    }
    // The same news twice is told once.
    if (std::find(m_events.begin(), m_events.end(), event) == m_events.end())
        m_events.push_back(std::move(event));
    m_delivery.start(0);
}

void HostSession::deliverQueued()
{
    if (m_delivering)
        return;
    if (m_inCall) {
        m_delivery.start(10);
        return;
    }
    const QScopedValueRollback delivering(m_delivering, true);
    const QDeadlineTimer turn(LongestDelivery);
    while (!m_events.empty() && !m_inCall) {
        if (turn.hasExpired())
            return m_delivery.start(0); // the window lives in between
        const auto event = std::move(m_events.front());
        m_events.pop_front();
        deliver(event.first, event.second);
    }
}

void HostSession::deliver(const Text& name, const Text& data)
{
    std::vector<Subscription> told; // a copy: a sink may come or go while it is told
    for (const Subscription& subscription : m_subscriptions) {
        if (name == subscription.name || name.starts_with(subscription.name + L"."))
            told.push_back(subscription);
    }
    for (const Subscription& subscription : told) {
        if (std::find(m_subscriptions.begin(), m_subscriptions.end(), subscription) != m_subscriptions.end())
            tell(subscription, name, data);
    }
}

// A sink that fails does not keep the news from the others.
void HostSession::tell(const Subscription& subscription, const Text& name, const Text& data)
{
    try {
        subscription.sink->EventCallback(name, data);
    } catch (...) {
        Q_EMIT statusChanged(QString::fromStdWString(describeCurrentFailure()));
    }
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
