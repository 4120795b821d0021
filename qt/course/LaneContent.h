// What a chart with lanes shows.
#pragma once

#include "text/Dates.h"
#include "toolkit/Inks.h"

#include <QList>
#include <QString>

#include <optional>

namespace health {

// Something in a lane, at a moment or over a span of time.
struct LaneMark {
    enum class Shape {
        Dot,
        Tick, // an upright line
        Span, // a date that is known by its month or year only: a thin line over it
        Bar, // filled
        Frame, // a bar that is not filled
    };

    Shape shape = Shape::Dot;
    Moment first;
    Moment last; // equal to `first` for a dot
    QString text; // of its point; without a text, it has none
    QString day; // below the axis
    int record = -1;
    bool isSelected = false;
    int changedFrom = -1; // the lane of the mark before, if it is another one: an arrow leads from there
};

struct Lane {
    QString label; // at the left; elided if it is too long
    QString words; // at the right
    Ink wordsInk = Ink::Words;
    QString text; // of its point; without a text, it has none
    int record = -1;
    bool isSelected = false;
    QList<LaneMark> marks;
};

// A day that the axis may label.
struct LaneTick {
    Moment day;
    QString text;
    QString below; // in a second line
    bool isSelected = false;
};

struct LaneContent {
    QList<ChartPhrase> heading;
    QList<Lane> lanes;
    std::optional<Moment> today; // drawn as a line through all lanes
    QList<LaneTick> ticks; // the most important first; those without room are left out
    QString note;
    Ink selectedInk = Ink::Words; // of selected marks
    enum class Reading {
        ByLane,
        ByTime, // across the lanes
    } reading = Reading::ByLane; // the order of the points
};

}
