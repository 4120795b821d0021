#pragma once

#include "platform/Arrangement.h"
#include "platform/Form.h"

#include <QHash>
#include <QWidget>

class QLayout;

namespace health {

class ButtonView;
class ViewDesktop;

// Turns a form's arrangement into widgets and layouts, so that forms need no view code.
class FormBuilder {
public:
    FormBuilder(Form& form, ViewDesktop& desktop)
        : m_form(form)
        , m_desktop(desktop)
    {
    }

    // The whole form as a layout. The caller owns it, and the widget that gets it owns its widgets. Throws
    // std::logic_error for an arrangement with a menu.
    QLayout* build(const Arrangement& arrangement);

    // The widget of each control; frames are not included.
    const QHash<Control*, QWidget*>& widgets() const { return m_widgets; }
    // The widgets of the buttons among them.
    const QHash<const Control*, ButtonView*>& buttons() const { return m_buttons; }
    // The focusable widgets in the order of the arrangement.
    const QList<QWidget*>& inTabOrder() const { return m_inOrder; }

private:
    QLayout* buildBox(const Arrangement& box, Qt::Orientation orientation);
    void widenForNames(const Arrangement& field);
    QLayout* buildFields(const Arrangement& grid);
    QLayout* buildButtons(const Arrangement& row);
    QLayout* buildField(const Arrangement& field);
    QWidget* buildFrame(const Arrangement& frame);
    QWidget* widgetFor(Control& control);
    QWidget* labelFor(const Arrangement& field);

    Form& m_form;
    ViewDesktop& m_desktop;
    QHash<Control*, QWidget*> m_widgets;
    QHash<const Control*, ButtonView*> m_buttons;
    QList<QWidget*> m_inOrder;
};

}
