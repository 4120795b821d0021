#pragma once

#include "api/host.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

namespace health {

// The subscribers of a session's events, and the events on their way to them. Queued events are delivered from the
// event loop, in their order and never inside a call.
class EventQueue : public QObject {
    Q_OBJECT
public:
    // `isInCall` holds back the queued events while it returns true.
    explicit EventQueue(std::function<bool()> isInCall);

    // Registers a sink, which must outlive its registration. False if it is registered for the name already.
    bool add(TextView name, ICSS_SessionEvents& sink);
    // False if the sink was not registered for the name.
    bool remove(TextView name, ICSS_SessionEvents& sink);
    bool hasSubscriber(TextView name) const;
    // The names that have subscribers; a name with several appears several times.
    std::vector<Text> names() const;

    // Queues an event; an equal one that is still queued is not queued again. When too many are queued, one REFRESH
    // replaces them all.
    void queue(Text name, Text data);
    // Delivers an event to all its subscribers before it returns. If a sink fails, the others still receive it.
    void deliver(const Text& name, const Text& data);

Q_SIGNALS:
    void sinkFailed(const QString& description);

private:
    struct Subscription {
        Text name;
        ICSS_SessionEvents* sink;
        bool operator==(const Subscription&) const = default;
    };

    void deliverQueued();
    bool isSubscribed(const Subscription& subscription) const;
    void call(const Subscription& subscription, const Text& name, const Text& data);

    std::function<bool()> m_isInCall;
    std::vector<Subscription> m_subscriptions;
    std::deque<std::pair<Text, Text>> m_events;
    QTimer m_delivery;
    bool m_delivering = false;
};

}
