#include "host/windows/PanelMenus.h"

#include "api/PanelActions.h"
#include "host/windows/PanelPages.h"

#include <QAction>
#include <QEvent>
#include <QMenu>

#include <utility>

namespace health {

PanelMenus::PanelMenus(PanelPages& pages)
    : QObject(&pages)
    , m_pages(pages)
{
    connect(&pages, &PanelPages::currentChanged, this, &PanelMenus::followPanel);
    connect(&pages, &PanelPages::countChanged, this, &PanelMenus::followPanel);
}

void PanelMenus::add(QMenu& menu, const char* name, QAction* before)
{
    QAction* const separator = menu.insertSeparator(before);
    m_places.append({ &menu, QString::fromLatin1(name), before ? separator : nullptr, separator, {} });
    connect(&menu, &QMenu::aboutToShow, this, qOverload<>(&PanelMenus::refresh));
    refresh(m_places.last());
}

void PanelMenus::refresh()
{
    for (Place& place : m_places)
        refresh(place);
}

void PanelMenus::refresh(Place& place)
{
    for (const QPointer<QAction>& action : std::exchange(place.shown, {})) {
        if (action)
            place.menu->removeAction(action);
    }
    if (const QWidget* const panel = m_pages.current()) {
        for (QAction* const action : panel->actions()) {
            if (action->property(MenuProperty).toString() != place.name)
                continue;
            place.menu->insertAction(place.before, action);
            place.shown.append(action);
        }
    }
    place.separator->setVisible(!place.shown.isEmpty());
    const bool isOwn = place.menu->actions().size() == place.shown.size() + 1;
    place.menu->menuAction()->setVisible(!isOwn || !place.shown.isEmpty());
}

// The menu bar must know whether a menu has entries before the menu opens.
void PanelMenus::followPanel()
{
    if (m_panel)
        m_panel->removeEventFilter(this);
    m_panel = m_pages.current();
    if (m_panel)
        m_panel->installEventFilter(this);
    refresh();
}

bool PanelMenus::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ActionAdded || event->type() == QEvent::ActionRemoved)
        QMetaObject::invokeMethod(this, qOverload<>(&PanelMenus::refresh), Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

}
