// What a panel's details must show: the record that is selected in the list, or no record.
#pragma once

#include "control/kalmevRepHistCtrl.h"
#include "qt/PanelView.h"

namespace health::test {

// Describes how the details differ from the selected record; empty if they agree or are closed.
QString detailsDiffer(kalmevRepHistCtrl& control, const PanelView& panel);

// The texts of the list's rows in the shown order.
QStringList rowsOnScreen(const PanelView& panel);

// A part of the details that the user can reach, by its number from 0 to 2: the arrow that folds them, the fields, the
// picture. Null if it is not visible.
QWidget* partOfDetails(const PanelView& panel, int part);

}
