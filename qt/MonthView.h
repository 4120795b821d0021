#pragma once

#include "qt/MonthModel.h"

#include <QTableView>

namespace health {

// A month in which keys or the mouse choose a day. All keys move the current day, also into other months: the arrows,
// Home and End in the week, Page Up and Page Down by months, with Control or Shift by years. Enter or a click picks it.
class MonthView : public QTableView {
    Q_OBJECT
public:
    MonthView(const DateRange& allowed, Moment day, Moment today, QWidget* parent);

    Moment day() const { return m_day; }
    // Makes a day the current one. Does nothing for a year that a date text cannot contain.
    void goTo(Moment day);
    // The same day of another month, or that month's last day.
    void goByMonths(int count);

    QSize sizeHint() const override;

Q_SIGNALS:
    void monthChanged();
    // The user picks an allowed day.
    void picked(Moment day);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitToFont();
    bool move(const QKeyEvent& event);
    void pickIfAllowed(Moment day);

    MonthModel* m_model;
    Moment m_day;
};

}
