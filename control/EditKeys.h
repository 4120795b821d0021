#pragma once

#include "api/host.h"

#include <set>

namespace health {

// The keys that permit changes of one kind of record.
enum class EditKey {
    Elder,
    Pediatric,
    Er,
    TxContract,
    Asthma,
    Registry,
};

// The keys that the signed-on user holds; none before fetch().
class EditKeys {
public:
    // Asks the host. Throws what the host throws, and then leaves the keys unchanged.
    void fetch(const User& user);
    bool has(EditKey key) const { return m_held.contains(key); }

private:
    std::set<EditKey> m_held;
};

}
