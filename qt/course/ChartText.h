// Texts in pictures of courses.
#pragma once

#include "qt/RunFlow.h"
#include "qt/course/CoursePicture.h"
#include "toolkit/Inks.h"

#include <QRect>

class QPainter;

namespace health {

// A quiet caption with a value, which may both be empty.
struct ChartPhrase {
    QString caption;
    QString value;
    Ink ink = Ink::Words; // of the value; in Ink::Words it is regular, else semibold
    bool breaksBefore = false;
};

// The phrases side by side, in as many lines as the width needs.
RunFlow phraseFlow(const QList<ChartPhrase>& phrases, const CourseLook& look);

// A note below a picture; empty for an empty text.
RunFlow noteFlow(const QString& note, const CourseLook& look);

// Draws a text in one line of a place, elided at its end if it is too long.
void drawLine(QPainter& painter, const QRect& place, Qt::Alignment alignment, const QString& text, const QFont& font,
    const QColor& colour);

}
