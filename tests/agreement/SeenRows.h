// What a panel's list must show, by a search of its own that reads the bar's widgets.
#pragma once

#include "platform/controls/Grid.h"
#include "qt/PanelView.h"

namespace health::test {

// The grid's rows that the list must show, in the shown order.
QList<int> expectedRows(const Grid& grid, const PanelView& panel);

// The number of the record that the user sees as selected; empty if none is.
Text recordSeenSelected(const Grid& grid, const PanelView& panel);

}
