#pragma once

#include "toolkit/ControlPainting.h"
#include "toolkit/ControlStyle.h"

#include <QAbstractScrollArea>
#include <QPaintEvent>

namespace health {

// A list, grid or text area whose frame, drawn by ControlStyle, shows the keyboard focus. Qt repaints only what lies
// inside the frame, and fills that by the palette alone.
template<typename Area>
class FocusFramed : public Area {
public:
    using Area::Area;

protected:
    bool event(QEvent* event) override
    {
        const bool result = Area::event(event);
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            this->update();
        return result;
    }
    void paintEvent(QPaintEvent* event) override
    {
        const Look look { .enabled = this->isEnabled(), .flashing = this->property(FlashProperty).toBool() };
        QPainter(this->viewport()).fillRect(event->rect(), fieldGround(this->palette(), look));
        Area::paintEvent(event);
    }
};

}
