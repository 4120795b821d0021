// Fonts, colours and lengths on paper: black on white, in the dots of a printout.
#pragma once

#include <QFont>
#include <QPalette>
#include <QString>

class QPainter;
class QRectF;

namespace health {

struct Paper {
    Paper();

    QFont body;
    QFont strong; // semibold
    QFont heading; // semibold, larger
    QFont note; // smaller
    QPalette palette;
    double line = 0; // height of a line of text
    double gap = 0; // between columns
    double rowGap = 0; // between rows
    double hairline = 0;

    double widthOf(const QFont& font, const QString& text) const;
    // A single line; its left or right edge and top are the place's. Not cut off.
    void draw(QPainter& painter, const QRectF& place, const QFont& font, const QString& text, bool quiet,
        Qt::Alignment alignment = Qt::AlignLeft) const;
    void drawHairline(QPainter& painter, double left, double right, double y) const;
};

}
