// Colours of the logic and of the toolkit.
#pragma once

#include "platform/controls/Control.h"

#include <QColor>

namespace health {

inline Colour colourNumber(const QColor& colour)
{
    return static_cast<Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

inline QColor colourOf(Colour colour)
{
    return QColor(
        static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF), static_cast<int>(colour >> 16 & 0xFF));
}

}
