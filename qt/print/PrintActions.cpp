#include "qt/print/PrintActions.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/PublishedAction.h"
#include "qt/ShownRecords.h"
#include "qt/course/CourseSource.h"
#include "qt/print/CoursePrintout.h"
#include "qt/print/FilterWords.h"
#include "qt/print/ListPrintout.h"

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr TextView PrintModule = L"PrintActions";

}

PrintActions::PrintActions(ShownRecords& records, QWidget& panel)
    : QObject(&panel)
    , m_records(records)
    , m_list(u"Print &List..."_s)
    , m_course(u"Print Co&urse..."_s)
{
    m_list.setShortcut(QKeySequence(u"Ctrl+P"_s));
    m_course.setShortcut(QKeySequence(u"Ctrl+Shift+P"_s));
    connect(&m_list, &QAction::triggered, this, &PrintActions::printList);
    connect(&m_course, &QAction::triggered, this, &PrintActions::printCourse);
    for (QAction* const action : { &m_list, &m_course })
        publish(panel, *action, "File");
    connect(&records, &ShownRecords::reloaded, this, &PrintActions::follow);
    connect(&records, &ShownRecords::rearranged, this, &PrintActions::follow);
    connect(&records, &ShownRecords::selectionChanged, this, &PrintActions::follow);
    follow();
}

void PrintActions::follow()
{
    const bool hasRows = !m_records.rows().empty();
    m_list.setEnabled(hasRows);
    m_list.setToolTip(hasRows ? u"Print the list as it is shown"_s : u"The list shows no records."_s);
    const bool isSelected = m_records.selected() >= 0;
    m_course.setEnabled(isSelected);
    m_course.setToolTip(
        isSelected ? u"Print the selected record and the course of its kind"_s : u"No record is selected."_s);
}

void PrintActions::printList()
{
    modShared& shared = m_records.control().services();
    shared.trap(PrintModule, L"printList", [&] {
        ListPrintout printout(m_records, filterInWords(m_records.filter()));
        shared.ShowPages(printout);
    });
}

void PrintActions::printCourse()
{
    modShared& shared = m_records.control().services();
    shared.trap(PrintModule, L"printCourse", [&] {
        CoursePrintout printout(courseSource(m_records));
        shared.ShowPages(printout);
    });
}

}
