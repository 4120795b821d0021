#pragma once

#include <QColor>
#include <QElapsedTimer>
#include <QObject>

class QPainter;
class QRect;
class QWidget;

namespace health {

// A mark that turns on a widget while an action runs, from half a second on. During a server's call no timer runs, but
// posted events are processed every few milliseconds: the mark keeps itself moving by them.
class BusyMark : public QObject {
public:
    // Repaints the widget, which is its parent.
    explicit BusyMark(QWidget& widget);

    void setRunning(bool running);
    // Part of each painting of the widget; draws nothing while the action is young.
    void paint(QPainter& painter, const QRect& place, const QColor& colour);

private:
    void step();
    void scheduleStep();

    QWidget& m_widget;
    QElapsedTimer m_running; // invalid while nothing runs
    QElapsedTimer m_painted;
    QElapsedTimer m_stepped;
    int m_closeSteps = 0;
    bool m_scheduled = false;
};

}
