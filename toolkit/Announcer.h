#pragma once

#include <QString>

class QWidget;

namespace health {

// Lets screen readers speak a text once, whatever has the focus. Shows nothing. `about` is any widget of the window
// that the text is about.
void announce(QWidget& about, const QString& text);

}
