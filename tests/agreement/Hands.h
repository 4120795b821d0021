// Keyboard and mouse actions in the window on top.
#pragma once

#include <QWidget>

namespace health::test {

// The open menu or list, else the dialog on top, else the window of the panels; null for none.
QWidget* topWindow();

// One key with its modifiers, as in "Shift+Tab".
void pressKeys(const QString& keys);
void typeText(const QString& text);
// "click", "double", "right", "wheel" or "drag" in the window on top.
void useMouse(const QString& verb, QPoint from, QPoint to);

}
