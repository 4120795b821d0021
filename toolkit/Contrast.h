// How well a text can be read on its ground, by the contrast ratio of the Web Content Accessibility Guidelines.
#pragma once

#include "platform/controls/Control.h"

#include <initializer_list>

namespace health {

// What text of usual size needs.
inline constexpr double ReadableContrast = 4.5;

// From 1 (the same) to 21 (black and white).
double contrast(Colour one, Colour other);

// `part` (0 to 1) of the colour over the rest of the ground.
Colour mixed(Colour colour, Colour ground, double part);

// The colour, as far mixed with white or black as it takes to be readable on all the grounds; black or white when
// nothing is.
Colour readableOn(Colour wanted, std::initializer_list<Colour> grounds);

}
