#pragma once

#include <QString>

class QMainWindow;

namespace health {

struct Options;

// Lists the keys of the window's menus and of the panels.
void showShortcuts(QMainWindow& window);
// Tells the program's version, its server, who is signed on and the licence.
void showAbout(QMainWindow& window, const Options& options, const QString& user);

}
