#pragma once

#include <QAbstractButton>
#include <QShortcutEvent>

namespace health {

// A button whose access key works immediately. Qt delays the click by a tenth of a second, and keys typed meanwhile
// would reach the form before the click.
template<typename Widget>
class PressedAtOnce : public Widget {
public:
    using Widget::Widget;

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous())
            return Widget::event(event);
        // Options and check boxes are fields: the previous field is left first and may keep the focus.
        if (this->isCheckable())
            this->setFocus(Qt::ShortcutFocusReason);
        if (!this->isCheckable() || this->hasFocus())
            this->click();
        return true;
    }
};

}
