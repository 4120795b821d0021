#include "qt/RecordListView.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/GridModel.h"
#include "qt/RecordCopy.h"
#include "qt/ShownRecords.h"
#include "qt/ViewDesktop.h"

namespace health {

using namespace Qt::StringLiterals;

RecordListView::RecordListView(ShownRecords& records, ViewDesktop& desktop, QWidget& area)
    : GridView(records.control().fgData, desktop, { u"Record"_s, u"Summary"_s }, nullptr)
    , m_records(records)
    , m_area(area)
{
    setAccessibleName(u"Personal health records"_s);
}

void RecordListView::mirror(Change change)
{
    m_records.gridChanged(change);
    GridView::mirror(change);
}

void RecordListView::offerEntries()
{
    GridView::offerEntries();
    desktop().offerWithNextMenu(
        u"Copy with &Kind and Date"_s, [this] { copySelectedRecord(m_records); },
        [this] { return selectedRow() != -1; });
    desktop().offerWithNextMenu(
        u"Copy A&ll Shown"_s, [this] { copyShownRecords(m_records); }, [this] { return !m_records.rows().empty(); });
}

}
