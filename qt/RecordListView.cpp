#include "qt/RecordListView.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/GridModel.h"
#include "qt/ShownRecords.h"

namespace health {

using namespace Qt::StringLiterals;

RecordListView::RecordListView(ShownRecords& records, ViewDesktop& desktop, QWidget& area)
    : GridView(records.control().fgData, desktop, { u"Record"_s, u"Summary"_s }, nullptr)
    , m_records(records)
    , m_area(area)
{
    setAccessibleName(u"Personal health records"_s);
    connect(&records, &ShownRecords::rearranged, this, &RecordListView::rearrange);
}

void RecordListView::mirror(Change change)
{
    m_records.gridChanged(change);
    if (change == Change::Contents)
        gridModel().showRows(m_records.rearrangedRows());
    GridView::mirror(change);
}

// Scrolls to the selected row; without one, to the top.
void RecordListView::rearrange()
{
    gridModel().showRows(m_records.rearrangedRows());
    GridView::mirror(Change::Contents);
    if (const int row = selectedRow(); row != -1)
        scrollTo(gridModel().index(row, 0));
    else
        scrollToTop();
}

}
