#include "host/HostObjects.h"

namespace health {

namespace {
// Bit of the flags by which a caller allows the user to be asked: 44 has it, 12 has not.
constexpr int MayAsk = 32;
}

Text HostPatient::age() const
{
    const QDate today = QDate::currentDate();
    if (!data.birth.isValid())
        return {};
    const int years = today.year() - data.birth.year();
    const bool before = std::pair(today.month(), today.day()) < std::pair(data.birth.month(), data.birth.day());
    return std::to_wstring(before ? years - 1 : years);
}

bool HostEncounter::prepare(int flags)
{
    if (data.number == 0 && (flags & MayAsk))
        choose();
    return data.number != 0;
}

}
