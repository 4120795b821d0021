#pragma once

#include <QColor>
#include <QPalette>

namespace health {

// The colours of the calendar, made from the palette.
struct CalendarColours {
    explicit CalendarColours(const QPalette& palette);

    QColor day;
    QColor refusedDay;
    QColor currentDay; // of the number on `fill`
    QColor fill; // of the current day
    QColor focus; // the frame of a current day that is refused
    QColor weekday;
    QColor frame; // around the calendar
};

}
