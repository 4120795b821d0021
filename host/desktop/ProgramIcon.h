#pragma once

#include <QIcon>

namespace health {

// The program's icon, the same as that of the menu entry: a record card with a cross.
QIcon programIcon();

}
