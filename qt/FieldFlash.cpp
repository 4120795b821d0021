#include "qt/FieldFlash.h"

#include "toolkit/ControlStyle.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QTimer>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr int FlashMilliseconds = 1200;

bool isAnimated(const QWidget& widget)
{
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0;
}

void setFlashing(QWidget& field, bool flashing)
{
    field.setProperty(FlashProperty, flashing);
    field.update();
    if (auto* const area = qobject_cast<QAbstractScrollArea*>(&field))
        area->viewport()->update();
}

// One for each field: a second change makes the flash longer.
QTimer& timerOf(QWidget& field)
{
    const QString name = u"flash"_s;
    if (auto* const timer = field.findChild<QTimer*>(name, Qt::FindDirectChildrenOnly))
        return *timer;
    auto* const timer = new QTimer(&field);
    timer->setObjectName(name);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, &field, [&field] { setFlashing(field, false); });
    return *timer;
}

}

void flashField(QWidget& field)
{
    if (!isAnimated(field))
        return;
    setFlashing(field, true);
    timerOf(field).start(FlashMilliseconds);
}

}
