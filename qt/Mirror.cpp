#include "qt/Mirror.h"

#include "qt/Scale.h"
#include "toolkit/QtText.h"

namespace health {

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
