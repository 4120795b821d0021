#pragma once

namespace health {

class ShownRecords;

// Copy the selected record, or all that are shown, with their kinds and dates to the clipboard: a line for each, cells
// separated by tabs. Return the number of records copied.
int copySelectedRecord(const ShownRecords& records);
int copyShownRecords(const ShownRecords& records);

}
