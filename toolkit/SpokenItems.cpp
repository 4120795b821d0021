#include "toolkit/SpokenItems.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QEvent>

namespace health {

SpokenItems::SpokenItems(QAbstractItemView& view)
    : QObject(&view)
    , m_view(view)
{
    view.installEventFilter(this);
}

bool SpokenItems::eventFilter(QObject*, QEvent* event)
{
    // Later, because Qt reports the focus of the whole view after this event.
    if (event->type() == QEvent::FocusIn && QAccessible::isActive())
        QMetaObject::invokeMethod(this, &SpokenItems::speakCurrent, Qt::QueuedConnection);
    return false;
}

void SpokenItems::speakCurrent()
{
    const QModelIndex current = m_view.currentIndex();
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&m_view);
    QAccessibleTableInterface* const table = spoken ? spoken->tableInterface() : nullptr;
    if (!m_view.hasFocus() || !current.isValid() || !table)
        return;
    if (QAccessibleInterface* const cell = table->cellAt(current.row(), current.column())) {
        QAccessibleEvent event(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

}
