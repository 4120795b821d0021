#include "qt/course/CourseSource.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/DetailsTexts.h"
#include "qt/ShownRecords.h"

namespace health {

CourseSource courseSource(const ShownRecords& records)
{
    kalmevRepHistCtrl& control = records.control();
    modShared& services = control.services();
    return { .records = records.all(),
        .selected = records.selected(),
        .now = services.desktop().now(),
        .registryDue = Text(services.registryDue(currentPatient(control))),
        .birthDate = birthDate(services) };
}

}
