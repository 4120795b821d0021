#pragma once

#include "qt/ViewState.h"

#include <QElapsedTimer>
#include <QWidget>

class QSplitter;
class QVBoxLayout;

namespace health {

class FindBar;
class RecordListView;
class ShownRecords;
class ViewDesktop;

// Takes the place of the control's grid: from top to bottom, strips and bars, the list, and the details below it. The
// user moves the border between list and details; their shares of the height stay when the area is resized.
class ListArea : public QWidget {
public:
    // Both must outlive the area.
    ListArea(ShownRecords& records, ViewDesktop& desktop, QWidget* parent);

    RecordListView& list() { return *m_list; }
    FindBar& findBar() { return *m_find; }

    // Puts a strip above the list, below those that are there.
    void addStrip(QWidget& strip);
    // Puts the details below the list; the area takes ownership. They are open while they are not hidden. Their least
    // and largest heights limit what the user can give them.
    void setDetails(QWidget& details);

    ViewState viewState() const;
    void setViewState(const ViewState& state);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void goToList();
    void shareHeight();
    void keepShare();

    ShownRecords& m_records;
    QVBoxLayout* m_column;
    FindBar* m_find;
    QSplitter* m_splitter;
    RecordListView* m_list;
    QWidget* m_details = nullptr;
    int m_share; // of the details, in percent
    QElapsedTimer m_arrived; // in the list, from the bar
};

}
