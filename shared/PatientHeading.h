#pragma once

#include "platform/Explanation.h"
#include "shared/SharedObjects.h"

namespace health {

// The heading of a form that is opened now: the selected patient, and quietly the current visit. Empty if the host does
// not name its patients. Throws what the host throws.
FormHeading patientHeading(const SharedObjects& objects);

}
