#include "host/HostSession.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QUuid>

#include <algorithm>

namespace health {

namespace {

// Raised inside the host only; the server knows nothing of them.
bool isLocal(TextView name) { return name == L"REFRESH" || name == L"STATUS"; }

Text newToken() { return QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex()).toStdWString(); }

Text widenBytes(const QByteArray& utf8) { return widen({ utf8.data(), static_cast<std::size_t>(utf8.size()) }); }

// Shows the busy pointer for as long as it lives.
class BusyPointer {
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
};

}

HostSession::HostSession(Transport& transport, int timeoutMilliseconds, TryAgain tryAgain)
    : m_connection(transport, timeoutMilliseconds)
    , m_tryAgain(std::move(tryAgain))
    , m_token(newToken())
{
    m_connection.onEvent = [this](const Answer& event) { queueEvent(widenBytes(event.name), widenBytes(event.text)); };
    m_connection.onProgress = [this](int percent, const QString& text) { Q_EMIT progressed(percent, text); };
    m_delivery.setSingleShot(true);
    QObject::connect(&m_delivery, &QTimer::timeout, this, &HostSession::deliverQueued);
    QObject::connect(
        &m_connection, &ServerConnection::lostWhileIdle, this, &HostSession::reconnectQuietly, Qt::QueuedConnection);
}

// --- Connection ---

void HostSession::openConnection()
{
    if (!m_connection.isOpen())
        m_connection.open();
}

// Opens a connection and makes it what the old one was: signed on, with all subscriptions.
void HostSession::openSession()
{
    if (m_connection.isOpen())
        return;
    if (m_userName.empty())
        throw Failure(L"Nobody has signed on.");
    m_connection.open();
    const Text reply = widenBytes(request(L"MEVHOST SIGNON", m_token + L"^" + m_userName));
    const QStringList pieces = QString::fromStdWString(reply).split(u'^');
    if (pieces.size() < 4 || pieces[0].toLong() <= 0) {
        m_connection.close();
        throw Failure(pieces.value(1, QStringLiteral("The server did not take the sign-on.")).toStdWString());
    }
    m_signedOn = { pieces[0].toLong(), pieces[1].toStdWString(), pieces[2].toLong(), pieces[3].toStdWString() };
    for (const Subscription& subscription : m_subscriptions) {
        if (!isLocal(subscription.name))
            request(L"MEVHOST SUBSCRIBE", subscription.name);
    }
}

QByteArray HostSession::request(TextView name, TextView parameter)
{
    return m_connection.exchange(++m_lastNumber, name, parameter);
}

template<typename Work>
auto HostSession::withRetries(Work work)
{
    const QScopedValueRollback inCall(m_inCall, true);
    for (;;) {
        try {
            const BusyPointer busy;
            return work();
        } catch (const ConnectionLost& lost) {
            m_connection.close();
            if (!m_tryAgain(QString::fromStdWString(lost.description())))
                throw Failure(lost.description());
        }
    }
}

Text HostSession::users()
{
    return widenBytes(withRetries([this] {
        openConnection();
        return request(L"MEVHOST USERS", L"");
    }));
}

void HostSession::signOn(const Text& userName)
{
    m_connection.close();
    m_userName = userName;
    m_signedOn = {};
    m_values.clear();
    m_token = newToken();
    withRetries([this] { openSession(); });
}

void HostSession::connect(TextView)
{
    const Text userName = chooseUser ? chooseUser() : Text();
    if (userName.empty())
        throw Failure(L"Nobody has signed on.");
    signOn(userName);
}

// Events would be missed without a connection. One try; the next call goes on from there.
void HostSession::reconnectQuietly()
{
    if (m_connection.isOpen() || m_inCall || m_userName.empty())
        return;
    try {
        openSession();
        raiseEvent(L"REFRESH", L"");
    } catch (const Failure&) {
        m_connection.close();
    }
}

// --- Calls ---

Text HostSession::callText(TextView name, TextView parameter) { return call(name, parameter); }

Text HostSession::callList(TextView name, TextView parameter) { return call(name, parameter); }

Text HostSession::call(TextView name, TextView parameter)
{
    if (m_inCall)
        throw Failure(L"Another call is still running.");
    const long long number = ++m_lastNumber; // the same for every try, so that the server does it once
    return widenBytes(withRetries([&] {
        openSession();
        return m_connection.exchange(number, name, parameter);
    }));
}

// --- Events ---

bool HostSession::isSubscribed(TextView name) const
{
    return std::any_of(
        m_subscriptions.begin(), m_subscriptions.end(), [&](const Subscription& s) { return s.name == name; });
}

void HostSession::registerEvent(TextView name, ICSS_SessionEvents& sink)
{
    const Subscription subscription { Text(name), &sink };
    if (std::find(m_subscriptions.begin(), m_subscriptions.end(), subscription) != m_subscriptions.end())
        return;
    const bool known = isSubscribed(name);
    // First here, so that a reconnection subscribes it too, then at the server.
    m_subscriptions.push_back(subscription);
    if (!known && !isLocal(name))
        call(L"MEVHOST SUBSCRIBE", name);
}

void HostSession::unregisterEvent(TextView name, ICSS_SessionEvents& sink)
{
    const auto removed = std::erase(m_subscriptions, Subscription { Text(name), &sink });
    // A connection that is gone has taken its subscriptions along.
    if (removed > 0 && !isSubscribed(name) && !isLocal(name) && m_connection.isOpen())
        call(L"MEVHOST UNSUBSCRIBE", name);
}

void HostSession::raiseEvent(TextView name, TextView data)
{
    if (name == L"STATUS")
        Q_EMIT statusChanged(QString::fromStdWString(Text(data)));
    if (m_inCall)
        queueEvent(Text(name), Text(data));
    else
        deliver(Text(name), Text(data));
}

void HostSession::queueEvent(Text name, Text data)
{
    auto event = std::pair(std::move(name), std::move(data));
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
    while (!m_events.empty() && !m_inCall) {
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
            subscription.sink->EventCallback(name, data);
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
