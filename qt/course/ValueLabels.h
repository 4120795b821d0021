#pragma once

#include <QFont>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>

#include <span>

namespace health {

// A number at a point of a curve.
struct ValueLabel {
    QString text;
    QRect place;
    qsizetype point = 0; // index of the curve's point
    bool isOnCurve = false; // the curve passes behind it
};

// A point that wants a label.
struct LabelledPoint {
    QString text;
    qsizetype point = 0;
    bool isBelow = false; // the preferred side
    bool isNeeded = false; // gets its place before others, even across the curve
    int distance = 0; // from the point's middle to the text
};

// Places labels above or below the points of a curve so that no two overlap. Labels without a free place are left out.
// `curve`: from left to right. `room`: no label leaves it. The text's baseline is the lower edge of its place.
QList<ValueLabel> placedLabels(
    const QList<LabelledPoint>& wanted, const QList<QPoint>& curve, const QRect& room, const QFont& font);

}
