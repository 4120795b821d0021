#include "toolkit/WheelGuard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace health {

bool WheelGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    const auto* const widget = qobject_cast<QWidget*>(watched);
    const bool isField = qobject_cast<QComboBox*>(watched) || qobject_cast<QAbstractSpinBox*>(watched);
    if (!isField || widget->hasFocus())
        return false;
    event->ignore(); // Qt passes it on to the parent
    return true;
}

}
