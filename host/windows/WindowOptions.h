#pragma once

#include "host/session/RemoteServer.h"

#include <QString>

#include <optional>

namespace health {

// How the main window starts.
struct WindowOptions {
    long patient = 0; // 0: none
    QString user; // sign-on name; empty: the user is asked
    QString dataFolder; // of the local server
    QString serverProgram; // the local server
    std::optional<RemoteServer> server; // instead of the local one
    int timeoutMilliseconds = 0; // of a silent server
    int longestCallMilliseconds = 600'000; // even while the server keeps sending
    // Lets the user disturb the connection to the local server, which must have sample data.
    bool isLaboratory = false;
    // No user is present: the window asks no questions and prints errors on standard error.
    bool isUnattended = false;
};

}
