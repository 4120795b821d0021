#pragma once

class QWidget;

namespace health {

// Tints a field for about a second, because the program has changed its value. Nothing happens where the desktop wants
// no animations.
void flashField(QWidget& field);

}
