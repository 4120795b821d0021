#pragma once

#include "qt/course/CoursePicture.h"
#include "qt/course/CourseSource.h"
#include "records/FunctionalCourse.h"

namespace health {

// The items of daily living by assessment: a circle for the level, an arrow where it changed.
class FunctionalPicture : public CoursePicture {
public:
    explicit FunctionalPicture(const CourseSource& source);

    // The selected assessment has no readable date.
    bool isEmpty() const { return m_course.assessments().empty(); }

    int heightFor(int width, const CourseLook& look) const override;
    void draw(QPainter& painter, const QRect& place, const CourseLook& look) const override;
    QList<CoursePoint> points(const QRect& place, const CourseLook& look) const override;
    CourseTable table() const override { return m_course.table(); }

private:
    FunctionalCourse m_course;
    bool m_isOfCurrentVisit = false; // the selected assessment
};

}
