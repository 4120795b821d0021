#pragma once

#include "platform/controls/Control.h"
#include "records/RecordFilter.h"

#include <QObject>

#include <vector>

namespace health {

class kalmevRepHistCtrl;

enum class FoundIn { Label, Summary };

// The list's records and which of them are shown in which order: what the list, the bar that searches it, the details
// and the exports have in common. The list's view reports the grid's changes to it, and to nobody else.
//
// A record that is not shown is never selected, so that the commands act on the row that the user sees. The filter is
// cleared when the list shows another patient; the order stays.
class ShownRecords : public QObject {
    Q_OBJECT
public:
    // The control must outlive the object.
    explicit ShownRecords(kalmevRepHistCtrl& control);

    kalmevRepHistCtrl& control() const { return m_control; }

    // All records; the index is the grid's row.
    const std::vector<ListedRecord>& all() const { return m_all; }
    // The shown ones in the shown order, as indices of all().
    const std::vector<int>& rows() const { return m_found.rows; }
    // rows(), or nothing while the grid's rows are all shown in their order.
    std::optional<std::vector<int>> rearrangedRows() const;
    bool isShown(int row) const;
    // The selected record's index; -1 without one.
    int selected() const;

    const RecordFilter& filter() const { return m_filter; }
    bool isFiltered() const { return !m_filter.isEmpty(); }
    void setFilter(RecordFilter filter);
    RecordOrder order() const { return m_order; }
    void setOrder(RecordOrder order);
    // Shows all records as they were loaded.
    void showAll();

    // The kinds in the list in the order of loading, then others that the filter names; each with the number of its
    // records that the filter's words and year leave.
    struct KindCount {
        const RecordType* type;
        int count;
    };
    std::vector<KindCount> counts() const;
    // The number of records that the filter hides only because they have no date.
    int undatedHidden() const { return m_found.undated; }
    // Of the records' dates, the latest first.
    const std::vector<int>& years() { return m_finder.years(); }
    // The letters of a record that the filter's words have found; empty without words.
    std::vector<TextRange> found(int row, FoundIn column) const;

    // The grid has changed. All records are read again, after Contents immediately, after Colours soon.
    void gridChanged(Change change);

Q_SIGNALS:
    // The list was loaded again, or the current visit has changed. all() and rows() are new; their views are too.
    void reloaded();
    // rows(), filter() or order() has changed, but not the records.
    void rearranged();
    // Another record, or none, is selected.
    void selectionChanged();
    // This session has saved a record, which the filter may hide; an index of all().
    void recordSaved(int row);

private:
    void read();
    void readColours();
    void followPatient();
    void show(RecordFilter filter, RecordOrder order);
    void find();
    void deselectHidden();

    kalmevRepHistCtrl& m_control;
    std::vector<ListedRecord> m_all;
    RecordFinder m_finder;
    RecordFilter m_filter;
    RecordOrder m_order = RecordOrder::AsLoaded;
    std::vector<Text> m_words; // of the filter, folded
    FoundRecords m_found;
    std::vector<bool> m_shown; // for each of m_all
    long m_patient = 0;
    bool m_coloursChanged = false;
};

}
