// How controls look: shapes drawn with the palette's inks and the font's measures. No function changes the painter.
#pragma once

#include <QPainter>
#include <QPalette>
#include <QWidget>

namespace health {

// How a control differs from its usual look.
struct Look {
    bool enabled = true;
    bool focused = false;
    bool pressed = false;
    bool hovered = false;
    bool faulty = false; // a field whose entry was refused
    bool flashing = false; // a field that the program has just changed
    bool filled = false; // the button that saves
    bool checked = false;
};

// A pen or a fill of drawRounded; an invalid colour draws nothing.
struct Edge {
    QColor colour;
    int width = 1;
};

// Ground and frame of a field, a list or a drop-down list.
void drawField(QPainter& painter, const QRect& place, const QWidget& widget, const Look& look);

// The ground alone, for a viewport inside the frame.
QColor fieldGround(const QPalette& palette, const Look& look);

// Ground and frame of a button.
void drawButton(QPainter& painter, const QRect& place, const QWidget& widget, const Look& look);

// The caption's colour on a button.
QColor buttonInk(const QPalette& palette, const Look& look);

enum class Mark { Option, Check };

// The circle of an option or the box of a check mark.
void drawChoice(QPainter& painter, const QRect& place, const QWidget& widget, Mark mark, const Look& look);

// The focus around a text, or inside a row of a list.
void drawFocus(QPainter& painter, const QRect& place, const QWidget& widget);

enum class Symbol { ChevronDown, ChevronUp, Cross, Magnifier };

void drawSymbol(QPainter& painter, const QRect& place, const QWidget& widget, Symbol symbol, const QColor& colour);

}
