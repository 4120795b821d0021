#include "shared/Security.h"

namespace health {

Text editRefusal(TextView key)
{
    return L"Editing not permitted, you do not hold either the PROVIDER key or the " + Text(key) + L" key.";
}

void Security::CheckSecurity(TextView parameterName, TextView extraKey)
{
    m_errors.trap(L"modShared", L"CheckSecurity", [&] {
        // An error reply contains no key list, so every flag becomes false; the error is not shown.
        const Text reply = m_server.CallRpc(
            L"MEVUTL CHKSEC", L"PROVIDER|MEVZ CAC|MEVZ VIEW ONLY|" + Text(extraKey) + L"^" + Text(parameterName));
        const TextView keys = pieceView(reply, L"^", 1);
        const TextView parameter = pieceView(reply, L"^", 2);
        const auto held = [&](PieceNumber n) { return pieceView(keys, L"|", n) == L"1"; };
        m_flags = { .hasProvider = held(1),
            .hasCac = held(2),
            .viewOnly = held(3),
            .hasEditKey = held(4) || extraKey.empty(),
            .paramAssigned = pieceView(parameter, L"~", 1) == L"1",
            .paramUserClass = Piece(parameter, L"~", 2) };

        m_permissionMessage = permissionReason(parameterName, extraKey);
        if (!m_permissionMessage.empty())
            m_permissionMessage += L", thus you cannot make modifications.";
    });
}

Text Security::permissionReason(TextView parameterName, TextView extraKey) const
{
    const Text parameter = L"'" + Text(parameterName) + L"' parameter";
    if (m_flags.viewOnly)
        return L"You have the 'MEVZ VIEW ONLY' security key";
    if (!m_flags.hasProvider && !m_flags.hasEditKey) {
        if (!extraKey.empty())
            return L"You do not have either the 'PROVIDER' or the '" + Text(extraKey) + L"' security keys";
        // Intended: never reached, because without an extra key the edit key counts as held.
        return L"You do not have the 'PROVIDER' key";
    }
    if (m_flags.paramAssigned)
        return L"You have been assigned the " + parameter;
    if (!m_flags.paramUserClass.empty())
        return L"You are a member of the user class '" + m_flags.paramUserClass + L"' which has been assigned the "
            + parameter;
    return {};
}

}
