#include "shared/UserParameters.h"

namespace health {

namespace {

Text cacheKey(TextView name) { return L"MEVParam_" + TranslateChars(name, L"-", L"_"); }

}

Text UserParameters::GetUserParam(TextView name, TextView defaultValue)
{
    Text result(defaultValue);
    m_errors.trap(L"modShared", L"GetUserParam", [&] {
        auto value = m_objects.session().value(cacheKey(name));
        if (!value) {
            value = m_server.CallRpc(L"MEVUTL GETPARM", name);
            m_objects.session().setValue(cacheKey(name), *value);
        }
        if (!value->empty())
            result = *value;
    });
    return result;
}

bool UserParameters::KnowsUserParam(TextView name) const
{
    return m_objects.hasSession() && m_objects.session().value(cacheKey(name));
}

void UserParameters::SetUserParam(TextView name, TextView value)
{
    m_errors.trap(L"modShared", L"SetUserParam", [&] {
        const Text reply = m_server.CallRpc(L"MEVUTL SETPARM", Text(name) + L"^" + Text(value));
        if (!m_server.CheckRpcError(reply, L"Setting Parameter " + Text(name)))
            m_objects.session().setValue(cacheKey(name), value);
    });
}

}
