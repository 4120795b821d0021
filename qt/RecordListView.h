#pragma once

#include "qt/GridView.h"

#include <vector>

class QAction;

namespace health {

class ShownRecords;

// The panel's list of records.
class RecordListView : public GridView {
public:
    // All must outlive the view. `area` is placed where the control places its grid; the view lies within it.
    RecordListView(ShownRecords& records, ViewDesktop& desktop, QWidget& area);

    // Adds an action of the panel to the row's menu. It must outlive the view.
    void addToMenu(QAction& action) { m_menuActions.push_back(&action); }

protected:
    void mirror(Change change) override;
    void offerEntries() override;
    QWidget& placed() override { return m_area; }

private:
    ShownRecords& m_records;
    QWidget& m_area;
    std::vector<QAction*> m_menuActions;
};

}
