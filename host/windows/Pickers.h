// The host's questions: which patient, which visit, which user.
#pragma once

#include "host/framework/HostObjects.h"

#include <optional>

class QWidget;

namespace health {

// 0 when none was picked.
long pickPatient(HostSession& session, QWidget* parent);

// A visit with number 0 is "no visit"; empty when the user cancelled. The current visit is selected at first, so that
// only a deliberate choice changes it; without one the latest.
std::optional<VisitData> pickVisit(HostSession& session, long patientNumber, long currentVisit, QWidget* parent);

// The user's name as stored; empty when none was picked.
Text pickUser(HostSession& session, QWidget* parent);

}
