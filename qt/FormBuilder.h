#pragma once

#include "platform/Arrangement.h"
#include "platform/Form.h"

#include <QHash>
#include <QWidget>

class QLayout;

namespace health {

class QtDesktop;

// Turns a form's arrangement into widgets and layouts, so that no form has view code of its own.
class FormBuilder {
public:
    FormBuilder(Form& form, QtDesktop& desktop)
        : m_form(form)
        , m_desktop(desktop)
    {
    }

    // The whole form as a layout; its widgets belong to whom the layout is given to.
    QLayout* build(const Arrangement& arrangement);

    // The widget that takes the focus for a control, by control.
    const QHash<Control*, QWidget*>& widgets() const { return m_widgets; }
    // The widgets in the order of the arrangement, which is that of Tab.
    const QList<QWidget*>& inTabOrder() const { return m_inOrder; }

private:
    QLayout* buildBox(const Arrangement& box, Qt::Orientation orientation);
    void widenForNames(const Arrangement& field);
    QLayout* buildFields(const Arrangement& grid);
    QLayout* buildButtons(const Arrangement& row);
    QLayout* buildField(const Arrangement& field);
    QWidget* buildFrame(const Arrangement& frame);
    QWidget* widgetFor(Control& control);
    QWidget* makeWidget(Control& control);
    QWidget* labelFor(const Arrangement& field);

    Form& m_form;
    QtDesktop& m_desktop;
    QHash<Control*, QWidget*> m_widgets;
    QList<QWidget*> m_inOrder;
};

}
