// Lanes below each other on one axis of time: what several kinds of record show of their course.
#pragma once

#include "qt/course/LaneLayout.h"

namespace health {

class LaneChart {
public:
    explicit LaneChart(LaneContent content);

    int heightFor(int width, const CourseLook& look) const;
    void draw(QPainter& painter, const QRect& place, const CourseLook& look) const;
    QList<CoursePoint> points(const QRect& place, const CourseLook& look) const;

private:
    LaneLayout layOut(const QRect& place, const CourseLook& look) const { return { m_content, m_span, place, look }; }

    LaneContent m_content;
    std::optional<LaneSpan> m_span;
};

}
