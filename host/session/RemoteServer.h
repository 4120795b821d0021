#pragma once

#include <QString>

namespace health {

// Where a remote server is, and what the two sides show each other.
struct RemoteServer {
    QString host;
    int port = 0; // 0: there is no remote server
    QString certificateFile; // of this user; PEM. Empty: none is shown
    QString keyFile; // its private key, without a pass phrase; PEM
    QString authorityFile; // the only authorities that the server's certificate may come from; PEM
};

}
