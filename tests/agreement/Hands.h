// Keyboard and mouse actions in the window on top.
#pragma once

#include <QStringList>
#include <QWidget>

namespace health::test {

// The open menu or list, else the dialog on top, else the window of the panels; null for none.
QWidget* topWindow();

// One key with its modifiers, as in "Shift+Tab".
void pressKeys(const QString& keys);
void typeText(const QString& text);
// "click", "double", "right", "wheel" or "drag"; then the number of a widget, a place in it in hundredths of its width
// and height, and for a drag the widget where it ends.
void useMouse(const QStringList& words);

}
