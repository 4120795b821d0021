#pragma once

#include "api/Text.h"

#include <deque>
#include <optional>

namespace health {

class ServerConnection;

// A call whose request was sent under a number.
struct SentCall {
    long long number;
    Text name;
    Text parameter;

    bool isFor(TextView otherName, TextView otherParameter) const
    {
        return name == otherName && parameter == otherParameter;
    }
};

// Expected calls whose requests were sent before the calls are made. The calls must be made in the order in which
// they were sent; the first one out of order discards the rest.
class CallsAhead {
public:
    // The connection must outlive this object.
    explicit CallsAhead(ServerConnection& connection)
        : m_connection(connection)
    {
    }

    // Throws ConnectionLost.
    void send(SentCall call, TextView purpose);
    // The number under which this call was sent; empty if another call, or none, is the next one.
    std::optional<long long> take(TextView name, TextView parameter);
    // Discards the calls that were sent; their replies are ignored.
    void discard();

private:
    ServerConnection& m_connection;
    std::deque<SentCall> m_calls;
};

}
