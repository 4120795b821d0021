#pragma once

#include "api/PanelActions.h"

#include <QAction>
#include <QString>
#include <QWidget>

namespace health {

// Publishes an action of the panel for the host's menu of this name; the panel decides when its shortcut works.
inline void publish(QWidget& panel, QAction& action, const char* menu)
{
    action.setProperty(MenuProperty, QString::fromLatin1(menu));
    panel.addAction(&action);
}

}
