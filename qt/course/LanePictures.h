// The pictures of kinds of record that are drawn as lanes of time.
#pragma once

#include "qt/course/CoursePicture.h"
#include "qt/course/CourseSource.h"

#include <memory>

namespace health {

// The choices, each in a lane, with an arrow where one followed another.
std::unique_ptr<CoursePicture> feedingPicture(const CourseSource& source);
// The last menstrual period, today and the estimated delivery.
std::unique_ptr<CoursePicture> reproductivePicture(const CourseSource& source);
// One lane for each item.
std::unique_ptr<CoursePicture> refusalPicture(const CourseSource& source);
// One lane for each contract.
std::unique_ptr<CoursePicture> contractPicture(const CourseSource& source);

}
