#include "qt/ControlViews.h"

#include "qt/PanelIcon.h"
#include "qt/QtText.h"

#include <QEvent>

namespace health {

ButtonView::ButtonView(Button& button, QWidget* parent)
    : Mirror(button, toQString(button.caption()), parent)
{
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] {
        if (m_press)
            m_press();
        else
            m_control.click();
    });
}

bool ButtonView::mirror(Change change)
{
    if (change != Change::Caption)
        return false;
    setText(toQString(m_control.caption()));
    return true;
}

ImageView::ImageView(Image& image, QWidget* parent)
    : Mirror(image, parent)
{
    setAccessibleName(QStringLiteral("Personal Health"));
    setAccessibleDescription(toolTip());
    draw();
}

bool ImageView::mirror(Change change)
{
    if (change == Change::ToolTip)
        setAccessibleDescription(toLines(m_control.toolTip()));
    return false;
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
