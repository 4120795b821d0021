#pragma once

#include <QPixmap>

namespace health {

// The panel's picture, a record card with a cross. `side` is in device-independent pixels.
QPixmap panelIcon(int side, qreal devicePixelRatio);

}
