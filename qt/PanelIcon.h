#pragma once

#include <QPixmap>

namespace health {

// The panel's picture, a record card with a cross, drawn at a side length in pixels.
QPixmap panelIcon(int side, qreal devicePixelRatio);

}
