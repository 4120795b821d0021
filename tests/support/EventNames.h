// The names and data of the events that arrive.
#pragma once

#include "host/session/HostSession.h"

#include <QTest>

namespace health::test {

struct EventNames : ICSS_SessionEvents {
    EventNames(HostSession& session, std::initializer_list<TextView> subscribed)
    {
        for (const TextView name : subscribed)
            session.registerEvent(name, *this);
    }
    void EventCallback(TextView name, TextView text) override
    {
        names.emplace_back(name);
        data.emplace_back(text);
        if (onEvent)
            onEvent();
    }
    void RPCCallback(long, TextView) override { }
    void RPCCallbackError(long, long, TextView) override { }

    std::function<void()> onEvent;
    std::vector<Text> names;
    std::vector<Text> data;
};

}
