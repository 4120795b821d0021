#pragma once

#include "platform/Desktop.h"

namespace health {

// Handles Control with A, C, V, X, Y or Z in a multi-line box: sends the edit message and sets the key code to 0. The
// shift state is 1 for Shift, 2 for Control, 4 for Alt.
void filterEditKeys(Desktop& desktop, int& keyCode, int shift, EditHandle edit);

}
