#pragma once

#include <QIcon>

namespace health {

// The program's sign, as the menu entry's: a record card with a cross.
QIcon programIcon();

}
