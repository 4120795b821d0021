#pragma once

#include <QWidget>

class QSplitter;
class QVBoxLayout;

namespace health {

class RecordListView;
class ShownRecords;
class ViewDesktop;

// Takes the place of the control's grid: from top to bottom, strips and bars, the list, and the details below it. The
// user moves the border between list and details.
class ListArea : public QWidget {
public:
    // Both must outlive the area.
    ListArea(ShownRecords& records, ViewDesktop& desktop, QWidget* parent);

    RecordListView& list() { return *m_list; }

    // Puts the details below the list; the area takes ownership.
    void setDetails(QWidget& details);

private:
    QVBoxLayout* m_column;
    QSplitter* m_splitter;
    RecordListView* m_list;
};

}
