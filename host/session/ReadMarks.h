#pragma once

#include "api/host.h"

#include <deque>
#include <span>
#include <utility>

namespace health {

// Whether a call of the panel changes records.
bool changesRecords(TextView name);

// The purposes that a session states to the server (docs/protocol.md): what a reading call is for, and which replies
// have reached a form. The server then refuses changes to records that have changed since they were read.
class ReadMarks {
public:
    // Announces the next calls. A record that is read again counts as unread until its reply arrives.
    void announce(std::span<const ExpectedCall> calls);

    // The purpose that a request states: "LIST" or "EDIT" if the call was announced as such; for a change, "CHECK" and
    // the numbers of the replies that forms hold. Empty in a session that never announced the purpose of a call.
    Text purposeOf(TextView name, TextView parameter) const;

    // Notes that the reply to the call of this number has arrived.
    void noteReply(long long number, TextView name, TextView parameter);

private:
    const ExpectedCall* announced(TextView name, TextView parameter) const;

    std::deque<ExpectedCall> m_announced; // those with a purpose, the latest first
    std::deque<std::pair<long long, ExpectedCall>> m_inForms; // the latest first
};

}
