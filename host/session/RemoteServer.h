#pragma once

#include <QString>

namespace health {

// The address of a remote server, and the certificates of both sides.
struct RemoteServer {
    QString host;
    int port = 0;
    QString certificateFile; // of this user; PEM. Empty: the client presents none
    QString keyFile; // its private key, without a pass phrase; PEM
    QString authorityFile; // the only authorities that may have issued the server's certificate; PEM
};

}
