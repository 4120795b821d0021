#pragma once

#include "shared/ServerCalls.h"

namespace health {

// The user's parameters, stored on the server and cached in the host's session.
class UserParameters {
public:
    // All three must outlive the object.
    UserParameters(const SharedObjects& objects, ErrorReports& errors, ServerCalls& server)
        : m_objects(objects)
        , m_errors(errors)
        , m_server(server)
    {
    }

    // The value, fetched from the server once per session; `defaultValue` when it is empty.
    Text GetUserParam(TextView name, TextView defaultValue);
    // True if the parameter was fetched in this session; false also if there is no session. Throws what the session
    // throws.
    bool KnowsUserParam(TextView name) const;
    void SetUserParam(TextView name, TextView value);

private:
    const SharedObjects& m_objects;
    ErrorReports& m_errors;
    ServerCalls& m_server;
};

}
