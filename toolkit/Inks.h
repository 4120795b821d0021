// Colours with a meaning. All are made from the palette at run time, so that they suit light, dark and high-contrast
// desktops. No meaning may depend on a colour alone.
#pragma once

#include <QColor>
#include <QPalette>

namespace health {

enum class Ink {
    // For words and marks. Readable on Base, on Window and on the selection's tint.
    Words,
    Quiet, // captions, separators, explanations
    Visit, // values of the current visit, and its bar
    VisitCaption,
    News, // new, changed
    Caution,
    Error,
    Good,
    // For lines.
    FieldFrame, // visible on Base and Window
    Focus, // visible on Base and Window
    Hairline, // transparent; decoration only
    // For surfaces.
    Highlight, // the palette's, with enough contrast to its HighlightedText
    SelectionTint, // a selected or checked row
    CautionTint, // a field that the program has changed
    Severity1, // from here to Severity4, runs in pictures of a course, the mildest first
    Severity2,
    Severity3,
    Severity4,
    HeaderStrip,
};

// The same for every colour group of the palette: a window without the focus keeps its colours.
QColor colourOf(Ink ink, const QPalette& palette);

// Words or Base, whichever is easier to read on the surface.
QColor wordsOn(Ink surface, const QPalette& palette);

// For disabled fields and buttons: the ink on its way to the background, still readable.
QColor fadedColourOf(Ink ink, const QPalette& palette);

// Whether text is lighter than its background.
bool isDark(const QPalette& palette);

// Whether window and fields have the same colour, as in high-contrast palettes: only frames set fields off.
bool isFlat(const QPalette& palette);

}
