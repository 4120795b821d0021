#pragma once

#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/GridView.h"

#include <QWidget>

#include <array>

namespace health {

class kalmevRepHistCtrl;
class QtDesktop;

// The panel's widget: mirrors the control's parts, gives them their natural sizes, and lets the control
// place them. The first time it is shown, the control starts to work. Of several panels in a window the one that had
// the focus last is the active one: access keys act there, and the selections of the others are grey.
class PanelView : public QWidget {
public:
    // Both must outlive the view; the control is initialized.
    PanelView(kalmevRepHistCtrl& control, QtDesktop& desktop);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override; // passes the focus on to the list
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void followFocus(const QWidget* focused);
    void setActive(bool active);
    void setNaturalSizes();
    void arrange();

    kalmevRepHistCtrl& m_control;
    ImageView m_icon;
    ComboBoxView m_type;
    GridView m_grid;
    std::array<ButtonView, 3> m_buttons;
    bool m_active = true;
};

}
