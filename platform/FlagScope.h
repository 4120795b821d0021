#pragma once

#include <utility>

namespace health {

// Sets a flag; the destructor restores its previous value.
class FlagScope {
public:
    explicit FlagScope(bool& flag)
        : m_flag(flag)
        , m_before(std::exchange(flag, true))
    {
    }
    ~FlagScope() { m_flag = m_before; }

private:
    bool& m_flag;
    bool m_before;
};

}
