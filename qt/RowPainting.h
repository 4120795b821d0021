// What the lists have in common: frames of rows, notices, and what an empty list says.
#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

class QPainter;
class QWidget;

namespace health {

// Around the selected row: two hairlines with the focus, else thin.
void drawRowFrame(QPainter& painter, const QRect& row, const QWidget& list, bool focused);

// A strip that says what is wrong with the rows above it.
void drawNotice(QPainter& painter, const QRect& strip, const QWidget& list, const QString& text);

enum class StateSymbol { None, Person, Sheet };

// What a list without rows says.
struct ListState {
    QString title;
    QStringList lines = {};
    StateSymbol symbol = StateSymbol::None;

    bool isEmpty() const { return title.isEmpty(); }
};

// Where drawState() puts the symbol.
QRect symbolPlace(const QRect& room, const QWidget& list, const ListState& state);

// In the middle of the room.
void drawState(QPainter& painter, const QRect& room, const QWidget& list, const ListState& state);

}
