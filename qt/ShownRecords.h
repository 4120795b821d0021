#pragma once

#include "platform/controls/Control.h"
#include "records/RecordList.h"

#include <QObject>

#include <vector>

namespace health {

class kalmevRepHistCtrl;

// The list's records and which of them are shown in which order: what the list, the bar that searches it, the details
// and the exports have in common. The list's view reports the grid's changes to it, and to nobody else.
class ShownRecords : public QObject {
    Q_OBJECT
public:
    // The control must outlive the object.
    explicit ShownRecords(kalmevRepHistCtrl& control);

    kalmevRepHistCtrl& control() const { return m_control; }

    // All records; the index is the grid's row.
    const std::vector<ListedRecord>& all() const { return m_all; }
    // The shown ones in the shown order, as indices of all().
    const std::vector<int>& rows() const { return m_rows; }
    bool isShown(int row) const;
    // The selected record's index; -1 without one.
    int selected() const;

    // The grid has changed. After Contents and Colours all records are read again.
    void gridChanged(Change change);

Q_SIGNALS:
    // The list was loaded again, or the current visit has changed. all() and rows() are new; their views are too.
    void reloaded();
    // rows() has changed.
    void rearranged();
    // Another record, or none, is selected.
    void selectionChanged();

private:
    void read();
    void arrange();

    kalmevRepHistCtrl& m_control;
    std::vector<ListedRecord> m_all;
    std::vector<int> m_rows;
};

}
