#pragma once

#include "host/session/CallsAhead.h"

#include <QDeadlineTimer>

#include <optional>
#include <utility>

namespace health {

// The last change whose request was sent and then abandoned. If it is repeated soon, it keeps its number, so that
// the server makes it once. After another change, or later, when others may have changed the record, it counts as new.
class UnsettledChange {
public:
    void keep(SentCall call)
    {
        m_call = std::move(call);
        m_until.setRemainingTime(KeptMilliseconds);
    }
    void forget() { m_call.reset(); }
    // The number of this change, if it is the unsettled one. Forgets the unsettled change in either case.
    std::optional<long long> take(TextView name, TextView parameter)
    {
        const auto call = std::exchange(m_call, std::nullopt);
        return call && !m_until.hasExpired() && call->isFor(name, parameter) ? std::optional(call->number)
                                                                             : std::nullopt;
    }

private:
    static constexpr int KeptMilliseconds = 600'000;

    std::optional<SentCall> m_call;
    QDeadlineTimer m_until;
};

}
