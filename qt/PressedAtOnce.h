#pragma once

#include <QAbstractButton>
#include <QShortcutEvent>

namespace health {

// A button whose access key works at once. The toolkit's own works a tenth of a second later; what is typed meanwhile
// would meet a form that does not know of it yet.
template<typename Widget>
class PressedAtOnce : public Widget {
public:
    using Widget::Widget;

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous())
            return Widget::event(event);
        // A choice is a field: the field before is left first, and may keep the focus.
        if (this->isCheckable())
            this->setFocus(Qt::ShortcutFocusReason);
        if (!this->isCheckable() || this->hasFocus())
            this->click();
        return true;
    }
};

}
