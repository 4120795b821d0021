// A failure with a description for the user.
#pragma once

#include "api/Utf8.h"

#include <exception>

namespace health {

// Thrown by host objects and inside the panel, which shows it in a message box. what() returns the description as
// UTF-8.
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

// Thrown by a host's session if the server cannot be reached and the user declined to retry. Calls that follow
// immediately would fail in the same way, so the panel skips the rest of a load.
class ConnectionGone : public Failure {
    using Failure::Failure;
};

// The description of the exception being handled. Call it only inside a catch block.
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
