#include "qt/ControlViews.h"

#include "qt/PanelIcon.h"
#include "qt/QtText.h"
#include "qt/Scale.h"

#include <QEvent>

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
        widget.setToolTip(toLines(control.toolTip()));
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
        widget.hide(); // to show it now would open it as a window of its own
    widget.setToolTip(toLines(control.toolTip()));
}

ButtonView::ButtonView(Button& button, QWidget* parent)
    : QPushButton(toQString(button.caption()), parent)
    , m_button(button)
{
    setAutoDefault(false);
    mirrorCommon(*this, button);
    m_button.setObserver(this);
    connect(this, &QPushButton::clicked, this, [this] {
        if (m_press)
            m_press();
        else
            m_button.click();
    });
}

ButtonView::~ButtonView() { m_button.setObserver(nullptr); }

void ButtonView::controlChanged(Control& control, Change change)
{
    if (change == Change::Caption)
        setText(toQString(m_button.caption()));
    else
        mirrorCommon(*this, control, change);
}

ImageView::ImageView(Image& image, QWidget* parent)
    : QLabel(parent)
    , m_image(image)
{
    mirrorCommon(*this, image);
    setAccessibleName(QStringLiteral("Personal Health"));
    setAccessibleDescription(toolTip());
    draw();
    m_image.setObserver(this);
}

ImageView::~ImageView() { m_image.setObserver(nullptr); }

void ImageView::controlChanged(Control& control, Change change)
{
    mirrorCommon(*this, control, change);
    if (change == Change::ToolTip)
        setAccessibleDescription(toolTip());
}

void ImageView::draw()
{
    const int side = fontMetrics().height() * 5 / 4;
    setPixmap(panelIcon(side, devicePixelRatioF()));
}

void ImageView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        draw();
    QLabel::changeEvent(event);
}

}
