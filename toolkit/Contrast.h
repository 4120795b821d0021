// Readability of text by the contrast ratio of the Web Content Accessibility Guidelines.
#pragma once

#include <QColor>

#include <initializer_list>

namespace health {

// The guidelines' minimum for text of normal size.
inline constexpr double ReadableContrast = 4.5;

// From 1 (equal colours) to 21 (black and white); ignores transparency.
double contrast(const QColor& one, const QColor& other);

// The colour drawn with opacity `part` (0 to 1) on a background.
QColor mixed(const QColor& colour, const QColor& background, double part);

// The colour, lightened or darkened just enough to be readable on every background; else black or white.
QColor readableOn(const QColor& colour, std::initializer_list<QColor> backgrounds);

}
