#pragma once

#include <QToolButton>

namespace health {

// The symbol at the right end of a date's field that opens the calendar.
class CalendarButton : public QToolButton {
public:
    explicit CalendarButton(QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}
