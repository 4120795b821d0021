// What a form or panel must agree on with its window at every moment at which the user can act.
#pragma once

#include "control/kalmevRepHistCtrl.h"
#include "qt/FormDialog.h"
#include "qt/PanelView.h"
#include "qt/QtDesktop.h"

namespace health::test {

// The first disagreement between a form and its window, in words; empty for none.
QString disagreement(const FormDialog& dialog);
// The same between a control and its panel.
QString disagreement(const kalmevRepHistCtrl& control, const PanelView& panel);

// The values that a form shows to the user, by kind and place; what a saved record must show again when it is reopened.
QStringList shownValues(const FormDialog& dialog);

}
