#pragma once

class QTableView;

namespace health {

class Measures;

// Makes a table of two columns look like the fields around it: captions and values, without a frame. Returns the
// distance from the end of the longest caption to the second column.
int makeDetails(QTableView& table, const Measures& measures);

}
