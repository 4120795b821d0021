#pragma once

#include "qt/course/ChartText.h"
#include "qt/course/LaneContent.h"
#include "toolkit/Measures.h"

namespace health {

// The time between the first and the last moment on an axis.
struct LaneSpan {
    Moment first;
    Moment last;
};

// Where the parts of a chart with lanes lie. In a narrow place, the label and the words of a lane stand above its
// marks.
struct LaneLayout {
    // Without a span, the chart has no axis. The content must outlive the layout.
    LaneLayout(
        const LaneContent& laid, const std::optional<LaneSpan>& axis, const QRect& whole, const CourseLook& look);

    bool hasAxis() const { return span.has_value(); }
    int bottom() const { return notesTop + notesHeight; }
    QRect lane(qsizetype index) const;
    QRect label(qsizetype index) const;
    QRect words(qsizetype index) const;
    QRect track(qsizetype index) const; // the marks' part of a lane
    QRect mark(const LaneMark& mark, qsizetype lane) const;
    int x(Moment moment) const;
    // Where the point of a lane lies.
    QRect point(const Lane& lane, qsizetype index) const;

    const LaneContent& content;
    std::optional<LaneSpan> span; // of the axis
    QRect place;
    Measures measures;
    int lineHeight;
    int dot; // diameter
    bool isStacked = false;
    int laneHeight;
    int trackLeft = 0;
    int trackRight = 0; // exclusive
    int labelWidth = 0;
    int wordsWidth = 0;
    QList<int> ownWords; // the width of each lane's words
    int lanesTop = 0;
    int axisTop = 0;
    int tickHeight = 0;
    int notesTop = 0;
    int notesHeight = 0;

private:
    void divideWidth(const CourseLook& look);
};

}
