#include "host/session/EventQueue.h"

#include "api/Events.h"
#include "api/Failure.h"

#include <QDeadlineTimer>
#include <QScopedValueRollback>

#include <algorithm>

namespace health {

namespace {

constexpr std::size_t MostEvents = 1000;
constexpr int LongestDelivery = 50; // milliseconds of one turn of the event loop
constexpr int CallPause = 10; // milliseconds until the end of a call is checked again

}

EventQueue::EventQueue(std::function<bool()> isInCall)
    : m_isInCall(std::move(isInCall))
{
    m_delivery.setSingleShot(true);
    connect(&m_delivery, &QTimer::timeout, this, &EventQueue::deliverQueued);
}

bool EventQueue::isSubscribed(const Subscription& subscription) const
{
    return std::find(m_subscriptions.begin(), m_subscriptions.end(), subscription) != m_subscriptions.end();
}

bool EventQueue::add(TextView name, ICSS_SessionEvents& sink)
{
    Subscription subscription { Text(name), &sink };
    if (isSubscribed(subscription))
        return false;
    m_subscriptions.push_back(std::move(subscription));
    return true;
}

bool EventQueue::remove(TextView name, ICSS_SessionEvents& sink)
{
    return std::erase(m_subscriptions, Subscription { Text(name), &sink }) > 0;
}

bool EventQueue::hasSubscriber(TextView name) const
{
    return std::any_of(m_subscriptions.begin(), m_subscriptions.end(),
        [&](const Subscription& subscription) { return subscription.name == name; });
}

std::vector<Text> EventQueue::names() const
{
    std::vector<Text> names;
    for (const Subscription& subscription : m_subscriptions)
        names.push_back(subscription.name);
    return names;
}

void EventQueue::queue(Text name, Text data)
{
    auto event = std::pair(std::move(name), std::move(data));
    if (m_events.size() >= MostEvents) {
        m_events.clear();
        event = { Text(RefreshEvent), L"" };
    }
    if (std::find(m_events.begin(), m_events.end(), event) == m_events.end())
        m_events.push_back(std::move(event));
    m_delivery.start(0);
}

void EventQueue::deliverQueued()
{
    if (m_delivering)
        return;
    if (m_isInCall())
        return m_delivery.start(CallPause);
    const QScopedValueRollback delivering(m_delivering, true);
    const QDeadlineTimer turn(LongestDelivery);
    while (!m_events.empty() && !m_isInCall()) {
        if (turn.hasExpired())
            return m_delivery.start(0); // lets the window handle other events first
        const auto event = std::move(m_events.front());
        m_events.pop_front();
        deliver(event.first, event.second);
    }
}

void EventQueue::deliver(const Text& name, const Text& data)
{
    std::vector<Subscription> matching; // a copy: sinks may be added and removed during the delivery
    for (const Subscription& subscription : m_subscriptions) {
        if (name == subscription.name || name.starts_with(subscription.name + L"."))
            matching.push_back(subscription);
    }
    for (const Subscription& subscription : matching) {
        if (isSubscribed(subscription))
            call(subscription, name, data);
    }
}

void EventQueue::call(const Subscription& subscription, const Text& name, const Text& data)
{
    try {
        subscription.sink->EventCallback(name, data);
    } catch (...) {
        Q_EMIT sinkFailed(QString::fromStdWString(describeCurrentFailure()));
    }
}

}
