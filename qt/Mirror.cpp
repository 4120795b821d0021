#include "qt/Mirror.h"

#include "qt/FieldFlash.h"
#include "qt/Scale.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/QtText.h"

namespace health {

namespace {

// The widget that is drawn as the field: a date's line, else the view itself.
QWidget& fieldOf(QWidget& view) { return view.focusProxy() ? *view.focusProxy() : view; }

void mirrorNote(QWidget& view, const Control& control)
{
    if (!control.note().empty())
        flashField(fieldOf(view));
}

void mirrorFault(QWidget& view, const Control& control)
{
    for (QWidget* const widget : { &view, &fieldOf(view) }) {
        widget->setProperty(FaultProperty, toQString(control.fault()));
        widget->update();
    }
}

}

void mirrorCommon(QWidget& widget, const Control& control, Change change)
{
    switch (change) {
    case Change::Enabled:
        widget.setEnabled(control.isEnabled());
        break;
    case Change::Visible:
        widget.setVisible(control.isVisible());
        break;
    case Change::ToolTip:
        widget.setToolTip(toToolTip(control.toolTip()));
        break;
    case Change::Note:
        mirrorNote(widget, control);
        break;
    case Change::Fault:
        mirrorFault(widget, control);
        break;
    case Change::Place:
        widget.setGeometry(Scale(widget).pixels(control.place()));
        break;
    default:
        break;
    }
}

void mirrorCommon(QWidget& widget, const Control& control)
{
    widget.setEnabled(control.isEnabled());
    if (!control.isVisible())
        widget.hide(); // setVisible(true) would open it as a window, because it has no parent yet
    widget.setToolTip(toToolTip(control.toolTip()));
}

}
