#pragma once

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>

namespace health {

// A list or grid that shows a frame while it has the keyboard focus: half on the widget's border, half inside, so that
// it covers no text.
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
        else if (event->type() == QEvent::Paint)
            drawFrame(*this);
        return result;
    }
    void paintEvent(QPaintEvent* event) override
    {
        Area::paintEvent(event);
        drawFrame(*this->viewport());
    }

private:
    void drawFrame(QWidget& on)
    {
        if (!this->hasFocus())
            return;
        QPainter painter(&on);
        painter.setPen(this->palette().color(QPalette::Active, QPalette::Highlight));
        painter.drawRect(on.rect().adjusted(0, 0, -1, -1));
    }
};

}
