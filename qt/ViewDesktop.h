#pragma once

#include "platform/Desktop.h"

#include <QPoint>
#include <QString>

#include <functional>

namespace health {

// The desktop as views need it: before a view opens a context menu, it sets the place and adds its own entries.
class ViewDesktop : public Desktop {
public:
    // Where the next menu opens, in global coordinates. Forgets the entries that were offered with an earlier one.
    virtual void setPopUpPlace(QPoint place) = 0;
    // Appends an entry of the view to the next menu, after those offered before; `isUsable` is called when the menu
    // opens.
    virtual void offerWithNextMenu(QString caption, std::function<void()> work, std::function<bool()> isUsable) = 0;
};

}
