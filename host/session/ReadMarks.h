#pragma once

#include "api/host.h"

#include <deque>
#include <span>
#include <utility>

namespace health {

// Whether a call of the panel changes records.
bool changesRecords(TextView name);

// What a session tells the server of the use of its calls (docs/protocol.md), so that the server refuses to change what
// has been changed since it was read: what a reading call is for, and which replies have reached a form.
class ReadMarks {
public:
    // These calls come next. A record that is read once more counts as unread until its reply is there.
    void announce(std::span<const ExpectedCall> calls);

    // What a call says of its use: "LIST" or "EDIT" for one that was announced so, "CHECK" and the numbers of the
    // replies that forms hold for a change; empty in a session that never announced what its calls are for.
    Text purposeOf(TextView name, TextView parameter) const;

    // The reply to the call of this number has come.
    void noteReply(long long number, TextView name, TextView parameter);

private:
    const ExpectedCall* announced(TextView name, TextView parameter) const;

    std::deque<ExpectedCall> m_announced; // those with a purpose, the latest first
    std::deque<std::pair<long long, ExpectedCall>> m_inForms; // the latest first
};

}
