// What all widgets of controls have in common.
#pragma once

#include "platform/controls/Control.h"

#include <QWidget>

#include <utility>

namespace health {

// The note of a widget's control; who shows it follows the property's changes.
inline constexpr char NoteProperty[] = "note";

// Mirrors a change of what all controls share. `widget` is the view's widget.
void mirrorCommon(QWidget& widget, const Control& control, Change change);

// Mirrors the whole common state, for a view that has just been made.
void mirrorCommon(QWidget& widget, const Control& control);

// The widget of a control: it is the control's observer for as long as it lives, and must go before it.
template<typename Widget, typename Mirrored>
class Mirror : public Widget, public ControlObserver {
public:
    ~Mirror() override { m_control.setObserver(nullptr); }

    void controlChanged(Control&, Change change) final
    {
        mirror(change);
        mirrorCommon(*this, m_control, change);
    }

protected:
    // `arguments` are those of the toolkit's widget.
    template<typename... Arguments>
    explicit Mirror(Mirrored& control, Arguments&&... arguments)
        : Widget(std::forward<Arguments>(arguments)...)
        , m_control(control)
    {
        mirrorCommon(*this, control);
        control.setObserver(this);
    }

    // Mirrors a change of what this kind of control has of its own.
    virtual void mirror(Change) { }

    Mirrored& m_control;
};

}
