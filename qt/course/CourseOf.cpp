#include "qt/course/CourseOf.h"

#include "qt/course/AsthmaPicture.h"
#include "qt/course/FunctionalPicture.h"
#include "qt/course/LanePictures.h"

namespace health {

namespace {

// Null for a picture that would show nothing.
template<typename Picture>
std::unique_ptr<CoursePicture> pictureOf(const CourseSource& source)
{
    auto picture = std::make_unique<Picture>(source);
    return picture->isEmpty() ? nullptr : std::move(picture);
}

}

std::unique_ptr<CoursePicture> courseOf(const CourseSource& source)
{
    if (source.selected < 0 || source.selected >= static_cast<int>(source.records.size()))
        return nullptr;
    switch (source.records[static_cast<std::size_t>(source.selected)].type->number) {
    case RecordTypeNumber::Asthma:
        return pictureOf<AsthmaPicture>(source);
    case RecordTypeNumber::FunctionalStatus:
        return std::make_unique<FunctionalPicture>(source);
    case RecordTypeNumber::InfantFeeding:
        return feedingPicture(source);
    case RecordTypeNumber::Reproductive:
        return reproductivePicture(source);
    case RecordTypeNumber::Refusal:
        return refusalPicture(source);
    case RecordTypeNumber::TreatmentContract:
        return contractPicture(source);
    default: // birth measurements, which have no course
        return nullptr;
    }
}

}
