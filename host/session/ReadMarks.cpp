#include "host/session/ReadMarks.h"

#include <algorithm>

namespace health {

namespace {

// More than a list, a form and a nested form announce together.
constexpr std::size_t MostKept = 50;

bool isSame(const ExpectedCall& call, TextView name, TextView parameter)
{
    return call.name == name && call.parameter == parameter;
}

template<typename Kept>
void keepLatest(Kept& kept)
{
    if (kept.size() > MostKept)
        kept.resize(MostKept);
}

}

bool changesRecords(TextView name)
{
    return name.ends_with(L" SET") || name.ends_with(L" SETREG") || name.ends_with(L" DEL");
}

void ReadMarks::announce(std::span<const ExpectedCall> calls)
{
    for (const ExpectedCall& call : calls) {
        if (call.purpose == ExpectedCall::Purpose::Other)
            continue;
        std::erase_if(m_announced, [&](const ExpectedCall& old) { return isSame(old, call.name, call.parameter); });
        m_announced.push_front(call);
        if (call.purpose == ExpectedCall::Purpose::Editor)
            std::erase_if(
                m_inForms, [&](const auto& reply) { return isSame(reply.second, call.name, call.parameter); });
    }
    keepLatest(m_announced);
}

const ExpectedCall* ReadMarks::announced(TextView name, TextView parameter) const
{
    const auto found = std::find_if(m_announced.begin(), m_announced.end(),
        [&](const ExpectedCall& call) { return isSame(call, name, parameter); });
    return found == m_announced.end() ? nullptr : &*found;
}

Text ReadMarks::purposeOf(TextView name, TextView parameter) const
{
    if (changesRecords(name)) {
        if (m_announced.empty())
            return {};
        Text purpose = L"CHECK";
        for (const auto& [number, call] : m_inForms)
            purpose += L" " + std::to_wstring(number);
        return purpose;
    }
    const ExpectedCall* const call = announced(name, parameter);
    if (!call)
        return {};
    return call->purpose == ExpectedCall::Purpose::Editor ? L"EDIT" : L"LIST";
}

void ReadMarks::noteReply(long long number, TextView name, TextView parameter)
{
    const ExpectedCall* const call = announced(name, parameter);
    if (!call || call->purpose != ExpectedCall::Purpose::Editor)
        return;
    m_inForms.emplace_front(number, *call);
    keepLatest(m_inForms);
}

}
