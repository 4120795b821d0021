// The base of all widgets that mirror controls.
#pragma once

#include "platform/controls/Control.h"

#include <QWidget>

#include <utility>

namespace health {

// Mirrors a change of the state that all controls share.
void mirrorCommon(QWidget& widget, const Control& control, Change change);

// Mirrors the whole common state, for a new view.
void mirrorCommon(QWidget& widget, const Control& control);

// The widget of a control. It observes the control during its own life and must be destroyed before the control.
template<typename Widget, typename Mirrored>
class Mirror : public Widget, public ControlObserver {
public:
    ~Mirror() override { m_control.setObserver(nullptr); }

    void controlChanged(Control&, Change change) final
    {
        mirror(change);
        mirrorCommon(change == Change::Place ? placed() : *this, m_control, change);
    }

protected:
    // `arguments` are passed to the Qt widget.
    template<typename... Arguments>
    explicit Mirror(Mirrored& control, Arguments&&... arguments)
        : Widget(std::forward<Arguments>(arguments)...)
        , m_control(control)
    {
        mirrorCommon(*this, control);
        control.setObserver(this);
    }

    // Mirrors a change of the state that only this kind of control has.
    virtual void mirror(Change) { }

    // The widget that takes the control's place: the view, or one around it.
    virtual QWidget& placed() { return *this; }

    Mirrored& m_control;
};

}
