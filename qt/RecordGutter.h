#pragma once

#include <QHeaderView>

class QTableView;

namespace health {

class RecordRows;

// The marks beside the list's rows: a bar for the current visit, what is new, changed or gone, and what is locked. The
// mouse does in the gutter what it does in the row.
class RecordGutter : public QHeaderView {
public:
    // Both must outlive the gutter.
    RecordGutter(RecordRows& rows, QTableView& list);

    QSize sizeHint() const override;
    // The marks at a height of the viewport in words; empty without any.
    QString marksAt(int y) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void paintRow(QPainter& painter, int row) const;
    void paintMarks(QPainter& painter, int row, const QRect& place) const;
    void paintGone(QPainter& painter, int row, int y) const;
    bool passToRow(QEvent* event);

    RecordRows& m_rows;
    QTableView& m_list;
};

}
