#pragma once

#include "records/CourseTable.h"

#include <QFont>
#include <QList>
#include <QPalette>
#include <QRect>
#include <QString>

class QPainter;

namespace health {

// How a picture is drawn: on the screen with the widget's font and palette, on paper with the printer's.
struct CourseLook {
    QFont font;
    QPalette palette;
};

// A value in a picture that the user can point at or reach with the arrow keys.
struct CoursePoint {
    QRect place;
    QString text; // in full, such as "FEV 1 on 11/21/2026 08:15: 93"
    int record = -1; // index in the list of records; -1 for a point that belongs to no record
};

// The course of one kind of record over time. Holds values, not views of the list, so that it outlives a reload.
class CoursePicture {
public:
    virtual ~CoursePicture() = default;

    // The height in pixels that the picture needs in a width.
    virtual int heightFor(int width, const CourseLook& look) const = 0;
    // Draws within `place`. No background: the caller has filled it with Base.
    virtual void draw(QPainter& painter, const QRect& place, const CourseLook& look) const = 0;
    // In reading order. Empty for a picture without single values.
    virtual QList<CoursePoint> points(const QRect& place, const CourseLook& look) const = 0;
    virtual CourseTable table() const = 0;
};

}
