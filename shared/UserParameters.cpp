// modShared: user parameters, kept on the server and cached in the host's session.
#include "shared/modShared.h"

namespace health {

namespace {

Text cacheKey(TextView name) { return L"MEVParam_" + TranslateChars(name, L"-", L"_"); }

}

Text modShared::GetUserParam(TextView name, TextView defaultValue)
{
    Text result(defaultValue);
    trap(L"modShared", L"GetUserParam", [&] {
        auto value = session().value(cacheKey(name));
        if (!value) {
            value = CallRpc(L"MEVUTL GETPARM", name);
            session().setValue(cacheKey(name), *value);
        }
        if (!value->empty())
            result = *value;
    });
    return result;
}

bool modShared::KnowsUserParam(TextView name) const { return m_session && m_session->value(cacheKey(name)); }

void modShared::SetUserParam(TextView name, TextView value)
{
    trap(L"modShared", L"SetUserParam", [&] {
        const Text reply = CallRpc(L"MEVUTL SETPARM", Text(name) + L"^" + Text(value));
        if (!CheckRpcError(reply, L"Setting Parameter " + Text(name)))
            session().setValue(cacheKey(name), value);
    });
}

}
