// A run-time failure with a description for the user.
#pragma once

#include "api/Utf8.h"

#include <exception>

namespace health {

// Thrown by host objects and by the logic; never leaves the control. what() gives the description
// as UTF-8.
class Failure : public std::exception {
public:
    explicit Failure(Text description)
        : m_description(std::move(description))
        , m_utf8(narrow(m_description))
    {
    }

    const Text& description() const { return m_description; }
    const char* what() const noexcept override { return m_utf8.c_str(); }

private:
    Text m_description;
    std::string m_utf8;
};

// Thrown by a host's session: the server cannot be reached and the user did not want to try again. Calls that follow at
// once would end the same way.
class ConnectionGone : public Failure {
    using Failure::Failure;
};

// The description of the exception that is being handled. Call it inside a catch block only.
inline Text describeCurrentFailure()
{
    try {
        throw;
    } catch (const Failure& failure) {
        return failure.description();
    } catch (const std::exception& exception) {
        return widen(exception.what());
    } catch (...) {
        return L"Unknown failure.";
    }
}

}
