#pragma once

#include "host/windows/WindowOptions.h"

#include <QString>

namespace health {

// The command line.
struct Options : WindowOptions {
    QString picture; // file to save a picture of the window in
    bool list = false; // print the grid
    QString fhir; // file to export the list to
    QString registerLibrary;
    QString unregisterLibrary;

    bool registers() const { return !registerLibrary.isEmpty() || !unregisterLibrary.isEmpty(); }
};

// Reads the command line of the application object. Exits for --help, --version and invalid options.
Options readOptions();

// False if the options only print a text or register a component: these need no display.
bool needsDisplay(int argc, char** argv);

// True if the options only print or export records, so that nobody looks at the window.
bool worksWithoutWindow(int argc, char** argv);

}
