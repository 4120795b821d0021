// What the details pane says about a record.
#pragma once

#include "qt/DetailsHeading.h"
#include "records/RecordFields.h"

namespace health {

class kalmevRepHistCtrl;
class modShared;

// The selected patient's number; empty without one, or if the host cannot say.
Text currentPatient(kalmevRepHistCtrl& control);

// The place of the current visit; empty without one, or if the host does not name it.
Text placeOfVisit(const modShared& services);

// `place` is that of the current visit.
HeadingTexts headingOf(std::span<const ListedRecord> records, std::size_t index, TextView place);

// Moves the first two fields of a functional status, which are no items, to the heading, and removes all others.
QStringList takeFacts(std::vector<RecordField>& fields);

}
