// What the listed records say about the patient that a clinician should know before opening any of them.
#pragma once

#include "api/Component.h"
#include "records/RecordList.h"
#include "text/Dates.h"

namespace health {

// In this order, as far as the records say so:
// - a pregnancy with its estimated delivery, or that this date has passed;
// - a functional decline, if the latest assessment records one;
// - the next asthma visit, due at the date text `registryDue` of the asthma registry; empty if it was not read.
// A missing or unreadable value gives no alert.
std::vector<PatientAlert> patientAlerts(
    const std::vector<ListedRecord>& records, Moment now, TextView registryDue = {});

}
