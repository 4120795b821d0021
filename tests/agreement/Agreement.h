// A form or panel must agree with its window whenever the user can act.
#pragma once

#include "control/kalmevRepHistCtrl.h"
#include "qt/FormDialog.h"
#include "qt/PanelView.h"
#include "qt/QtDesktop.h"

namespace health::test {

// Describes the first disagreement between a form and its window; empty for none.
QString disagreement(const FormDialog& dialog);
// The same between a control and its panel.
QString disagreement(kalmevRepHistCtrl& control, const PanelView& panel);

// The values in a form, by their place: a saved record must show them again when it is reopened.
QStringList shownValues(const FormDialog& dialog);

}
