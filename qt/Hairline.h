// For sources that are not yet adapted: the header has moved.
#pragma once

#include "toolkit/Hairline.h"
