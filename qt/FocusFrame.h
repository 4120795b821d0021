#pragma once

#include <QAbstractScrollArea>

namespace health {

// Draws a frame inside a list or grid that has the keyboard focus; at the end of its paint event.
void paintFocusFrame(QAbstractScrollArea& area);

}
