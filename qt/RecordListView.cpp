#include "qt/RecordListView.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/GridModel.h"
#include "qt/ShownRecords.h"
#include "qt/ViewDesktop.h"

#include <QAction>

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
    for (QAction* const action : m_menuActions)
        desktop().offerWithNextMenu(
            action->text(), [action] { action->trigger(); }, [action] { return action->isEnabled(); });
}

}
