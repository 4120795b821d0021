#pragma once

#include "host/session/RemoteServer.h"

#include <QString>
#include <QStringList>

namespace health {

// What the command line asks for.
struct Options {
    long patient = 0;
    QString user; // sign-on name; empty: the user is asked
    QString picture; // file to save a picture of the window in
    QString tour; // folder to save pictures of all windows in
    bool list = false; // print the grid
    QString dataFolder;
    QString serverProgram;
    RemoteServer server; // instead of a local one, where its port is not 0
    int timeoutMilliseconds = 0; // of a silent server
    int longestCallMilliseconds = 600'000; // however much the server sends meanwhile
    QString registerLibrary;
    QString unregisterLibrary;

    // Nobody sits in front of it: no questions are asked, errors go to standard error.
    bool isUnattended() const { return list || !picture.isEmpty() || !tour.isEmpty(); }
};

// Reads the command line of the application object. Ends the program for --help, --version and for what
// cannot be understood.
Options readOptions();

}
