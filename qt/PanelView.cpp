#include "qt/PanelView.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/QtDesktop.h"
#include "qt/Scale.h"

#include <QApplication>
#include <QFocusEvent>

#include <algorithm>
#include <utility>

namespace health {

PanelView::PanelView(kalmevRepHistCtrl& control, QtDesktop& desktop)
    : m_control(control)
    , m_icon(control.imgIcon, this)
    , m_type(control.cboType, this)
    , m_grid(control.fgData, desktop, { tr("Record"), tr("Summary") }, this)
    , m_buttons { { { control.cmd[0], this }, { control.cmd[1], this }, { control.cmd[2], this } } }
{
    setAccessibleName(tr("Personal Health"));
    m_type.setAccessibleName(tr("Record type to add"));
    m_type.setAccessibleDescription(m_type.accessibleName()); // some screen readers take its value for its name
    m_grid.setAccessibleName(tr("Personal health records"));
    for (ButtonView& button : m_buttons)
        button.setRefuge(m_grid);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focused) { followFocus(focused); });
    setNaturalSizes();
}

// The focus in a window's other parts leaves the active panel as it is.
void PanelView::followFocus(const QWidget* focused)
{
    for (const QWidget* around = focused; around; around = around->parentWidget()) {
        if (const auto* const panel = dynamic_cast<const PanelView*>(around); panel && panel->window() == window())
            return setActive(panel == this);
    }
}

void PanelView::setActive(bool active)
{
    if (std::exchange(m_active, active) == active)
        return;
    for (ButtonView& button : m_buttons)
        button.setAccessKeyUsed(active);
    m_grid.setQuiet(!active);
}

void PanelView::setNaturalSizes()
{
    const Scale scale(*this);
    const auto place = [&](Control& control, QSize size) {
        control.setPlace(
            { control.place().left, control.place().top, scale.twips(size.width()), scale.twips(size.height()) });
    };
    QSize button;
    for (const ButtonView& view : m_buttons)
        button = button.expandedTo(view.sizeHint());
    for (Button& command : m_control.cmd)
        place(command, button);
    place(m_control.imgIcon, m_icon.sizeHint());
    // Wide enough for the longest type, whatever the patient's list holds.
    const int letters = m_type.fontMetrics().horizontalAdvance(QStringLiteral("  To add, select a form...")) * 3 / 2;
    place(m_control.cboType, QSize(letters, m_type.sizeHint().height()));
}

void PanelView::arrange()
{
    const Scale scale(*this);
    m_control.UserControl_Resize(scale.twips(width()), scale.twips(height()));
}

QSize PanelView::sizeHint() const { return minimumSizeHint() * 2; }

QSize PanelView::minimumSizeHint() const
{
    const int button = m_buttons.front().sizeHint().width();
    const int line = fontMetrics().height();
    return { button + line * 16, m_type.sizeHint().height() + line * 10 };
}

void PanelView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // A panel that comes beside others waits for the focus.
    const auto panels = window()->findChildren<QWidget*>();
    setActive(std::none_of(panels.begin(), panels.end(), [this](QWidget* widget) {
        const auto* const panel = dynamic_cast<PanelView*>(widget);
        return panel && panel != this && panel->m_active;
    }));
    m_control.UserControl_Show();
}

// Not a focus proxy: Tab would go past the type list.
void PanelView::focusInEvent(QFocusEvent* event) { m_grid.setFocus(event->reason()); }

void PanelView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void PanelView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        setNaturalSizes();
        arrange();
        // The parts learn of it after the panel.
        QMetaObject::invokeMethod(
            this,
            [this] {
                setNaturalSizes();
                arrange();
            },
            Qt::QueuedConnection);
    }
}

}
