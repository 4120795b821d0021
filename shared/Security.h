#pragma once

#include "shared/ServerCalls.h"

namespace health {

// The title and the text of the box for a user who holds neither PROVIDER nor the key of a record's type.
inline constexpr TextView InsufficientPermissions = L"Insufficient Permissions";
Text editRefusal(TextView key);

// The signed-on user's keys and edit-blocking parameter, as the server reported them.
struct SecurityFlags {
    bool hasProvider = false;
    bool hasCac = false; // Intended: fetched, but nothing depends on it
    bool viewOnly = false;
    bool hasEditKey = false; // holds the caller's extra key, or none was named
    bool paramAssigned = false;
    Text paramUserClass; // the class through which the parameter is set, or empty
};

// Whether the user may modify records at all. EditKeys (control/) has the keys of each type.
class Security {
public:
    // Both must outlive the object.
    Security(ErrorReports& errors, ServerCalls& server)
        : m_errors(errors)
        , m_server(server)
    {
    }

    // Asks the server for the user's keys and the edit-blocking parameter and builds PermissionMessage. The extra
    // key may be empty.
    void CheckSecurity(TextView parameterName, TextView extraKey);
    bool HasProvider() const { return m_flags.hasProvider; }
    // Why the user may not modify records; empty when the user may.
    const Text& PermissionMessage() const { return m_permissionMessage; }

protected:
    void clearPermissionMessage() { m_permissionMessage.clear(); }

private:
    Text permissionReason(TextView parameterName, TextView extraKey) const;

    ErrorReports& m_errors;
    ServerCalls& m_server;
    SecurityFlags m_flags;
    Text m_permissionMessage;
};

}
