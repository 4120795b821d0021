#pragma once

#include "qt/BusyMark.h"
#include "qt/GridView.h"
#include "qt/RecordRows.h"
#include "qt/RowPainting.h"

#include <QElapsedTimer>
#include <QTime>

#include <vector>

class QAction;

namespace health {

class RecordDelegate;
class RecordGutter;
class ShownRecords;

// The panel's list of records: typeset rows beside a gutter with their marks. An empty list says why it is empty.
class RecordListView : public GridView {
public:
    // All must outlive the view. `area` is placed where the control places its grid; the view lies within it.
    RecordListView(ShownRecords& records, ViewDesktop& desktop, QWidget& area);

    // Shows the rows quietly, because the server is not connected.
    void setAway(bool away);
    // When the rows were read; null before that, and if some could not be read.
    QTime loadedAt() const { return m_loadedAt; }
    // What the list says instead of rows; empty while it shows rows.
    ListState state() const;

    // Adds an action of the panel to the row's menu. It must outlive the view.
    void addToMenu(QAction& action) { m_menuActions.push_back(&action); }

protected:
    void mirror(Change change) override;
    void offerEntries() override;
    QWidget& placed() override { return m_area; }
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QRect placeOfRow(int row) const override;
    int restingRow() const override;
    int heightOfLine() const override;
    int heightOfText(int row) override;

private:
    bool isLoading() const;
    void noteContents();
    void noteSelection();
    void noteLoading();
    void adoptColours();
    void setRoom();
    void keepPlace();
    QString described(int gridRow) const;
    void rearrange();

    ShownRecords& m_records;
    QWidget& m_area;
    RecordRows m_rows;
    RecordGutter* m_gutter;
    RecordDelegate* m_delegate;
    BusyMark m_busy;
    QElapsedTimer m_loading; // invalid while nothing is loading
    QTime m_loadedAt;
    Text m_lookedAt; // key of the row that was selected last
    long m_patient = 0; // whose rows are shown
    int m_place = -1; // the current row before the list was loaded again
    std::vector<QAction*> m_menuActions;
};

}
