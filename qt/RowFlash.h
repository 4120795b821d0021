#pragma once

#include <QTimer>

class QPainter;
class QRect;
class QWidget;

namespace health {

// The brief highlight of a row whose record was saved.
class RowFlash {
public:
    // Repaints the widget, which must outlive the object.
    explicit RowFlash(QWidget& rows);

    void start(int row);
    // The highlighted row; -1 without one.
    int row() const { return m_end.isActive() ? m_row : -1; }
    void paint(QPainter& painter, const QRect& place) const;

private:
    QWidget& m_rows;
    QTimer m_end;
    int m_row = -1;
};

}
