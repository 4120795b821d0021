#pragma once

#include <QString>

class QMainWindow;

namespace health {

struct WindowOptions;

// Lists the shortcuts of the window's menus and of the panels.
void showShortcuts(QMainWindow& window);
// Shows the program's version, its server, the signed-on user and the licence.
void showAbout(QMainWindow& window, const WindowOptions& options, const QString& user);

}
