#pragma once

#include "qt/course/CoursePicture.h"
#include "qt/course/CourseSource.h"

#include <memory>

namespace health {

// The picture for the selected record's kind; null for a kind without one, and without a selected record.
std::unique_ptr<CoursePicture> courseOf(const CourseSource& source);

}
