#include "qt/BusyMark.h"

#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace health {

namespace {

constexpr qint64 PatienceMilliseconds = 500;
constexpr qint64 FrameMilliseconds = 100;
constexpr qint64 TurnMilliseconds = 1200;
// A server's call lets at least a millisecond pass between two steps. Several that are closer: a usual event loop runs.
constexpr qint64 CloseNanoseconds = 500'000;
constexpr int ManyCloseSteps = 4;

}

BusyMark::BusyMark(QWidget& widget)
    : QObject(&widget)
    , m_widget(widget)
{
}

void BusyMark::setRunning(bool running)
{
    if (running == m_running.isValid())
        return;
    running ? m_running.start() : m_running.invalidate();
    m_painted.start();
    m_widget.update();
    scheduleStep();
}

void BusyMark::scheduleStep()
{
    if (m_running.isValid() && !std::exchange(m_scheduled, true))
        QMetaObject::invokeMethod(this, &BusyMark::step, Qt::QueuedConnection);
}

// A usual event loop has timers, and steps without a pause would use up the processor.
void BusyMark::step()
{
    m_scheduled = false;
    if (!m_running.isValid())
        return;
    if (m_painted.elapsed() >= FrameMilliseconds) {
        m_painted.start();
        m_widget.update();
    }
    m_closeSteps = m_stepped.isValid() && m_stepped.nsecsElapsed() < CloseNanoseconds ? m_closeSteps + 1 : 0;
    m_stepped.start();
    if (m_closeSteps >= ManyCloseSteps)
        QTimer::singleShot(FrameMilliseconds, this, &BusyMark::scheduleStep);
    else
        scheduleStep();
}

void BusyMark::paint(QPainter& painter, const QRect& place, const QColor& colour)
{
    if (!m_running.isValid() || m_running.elapsed() < PatienceMilliseconds)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double width = place.width() / 6.0;
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    constexpr int degree = 16; // the unit of arcs
    const auto turned = static_cast<int>(m_running.elapsed() % TurnMilliseconds * 360 / TurnMilliseconds);
    const QRectF circle = QRectF(place).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.drawArc(circle, -turned * degree, 270 * degree);
    painter.restore();
}

}
