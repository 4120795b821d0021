#pragma once

#include "qt/course/AsthmaLayout.h"
#include "qt/course/CourseSource.h"

namespace health {

// FEV 1, FEF 25-75 and PEF over time, the severities below them.
class AsthmaPicture final : public CoursePicture {
public:
    explicit AsthmaPicture(const CourseSource& source);

    // No record has a readable date.
    bool isEmpty() const { return m_data.readings().empty(); }

    int heightFor(int width, const CourseLook& look) const override;
    void draw(QPainter& painter, const QRect& place, const CourseLook& look) const override;
    QList<CoursePoint> points(const QRect& place, const CourseLook& look) const override;
    CourseTable table() const override;

private:
    AsthmaData m_data;
};

}
