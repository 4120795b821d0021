#include "host/session/CallsAhead.h"

#include "host/session/ServerConnection.h"

#include <utility>

namespace health {

void CallsAhead::send(SentCall call, TextView purpose)
{
    m_connection.send(call.number, call.name, call.parameter, purpose);
    m_calls.push_back(std::move(call));
}

std::optional<long long> CallsAhead::take(TextView name, TextView parameter)
{
    if (m_calls.empty() || !m_calls.front().isFor(name, parameter)) {
        discard();
        return std::nullopt;
    }
    const long long number = m_calls.front().number;
    m_calls.pop_front();
    return number;
}

void CallsAhead::discard()
{
    for (const SentCall& call : std::exchange(m_calls, {}))
        m_connection.drop(call.number);
}

}
