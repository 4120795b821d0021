// Dialogs in which the user picks a patient, a visit or a user.
#pragma once

#include "host/framework/HostObjects.h"

#include <optional>

class QWidget;

namespace health {

// 0 if none was picked. Until the user types, the patients who were seen before stand on top, in their order.
long pickPatient(HostSession& session, const QList<PatientData>& seen, QWidget* parent);

// A visit with number 0 is "no visit"; empty if the user cancelled. The current visit is preselected, so that only a
// deliberate choice changes it; without one, the latest visit.
std::optional<VisitData> pickVisit(HostSession& session, long patientNumber, long currentVisit, QWidget* parent);

// The user's name as stored; empty if none was picked.
Text pickUser(HostSession& session, QWidget* parent);

}
