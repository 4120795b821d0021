#include "shared/PatientHeading.h"

namespace health {

FormHeading patientHeading(const SharedObjects& objects)
{
    const Patient& patient = objects.patient();
    FormHeading heading;
    if (patient.number() != 0)
        heading.name = patient.displayName();
    if (heading.name.empty())
        return heading;
    for (const Text& detail : { L"No. " + objects.patientText(), patient.sex(), patient.displayAge() }) {
        if (!detail.empty())
            heading.details.push_back(detail);
    }
    if (const Text visit = objects.encounter().displayText(); !visit.empty())
        heading.visit = L"Visit " + visit;
    return heading;
}

}
