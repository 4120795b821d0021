#pragma once

#include "qt/GridView.h"

namespace health {

class ShownRecords;

// The panel's list of records.
class RecordListView : public GridView {
public:
    // All must outlive the view. `area` is placed where the control places its grid; the view lies within it.
    RecordListView(ShownRecords& records, ViewDesktop& desktop, QWidget& area);

protected:
    void mirror(Change change) override;
    void offerEntries() override;
    QWidget& placed() override { return m_area; }

private:
    ShownRecords& m_records;
    QWidget& m_area;
};

}
