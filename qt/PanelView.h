#pragma once

#include "qt/ComboBoxView.h"
#include "qt/ControlViews.h"
#include "qt/ShownRecords.h"
#include "qt/ViewState.h"

#include <QWidget>

#include <array>

namespace health {

class AwayStrip;
class CountLine;
class DetailsPane;
class ListArea;
class TakeAlong;
class kalmevRepHistCtrl;
class ViewDesktop;

// The panel's widget: mirrors the control's parts, sets their natural sizes, and lets the control place them. Showing
// it the first time starts the control. If a window has several panels, the one that had the focus last is active:
// access keys act there, and the selections of the others are grey.
class PanelView : public QWidget {
public:
    // Both must outlive the view; the control must be initialized.
    PanelView(kalmevRepHistCtrl& control, ViewDesktop& desktop);

    // How the user has arranged the panel.
    ViewState viewState() const;
    void setViewState(const ViewState& state);
    // Copies and exports the list.
    const TakeAlong& takeAlong() const { return *m_takeAlong; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void actionEvent(QActionEvent* event) override; // published actions work while the panel is active
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override; // passes the focus on to the list
    void keyPressEvent(QKeyEvent* event) override; // Escape closes the bar
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void followFocus(const QWidget* focused);
    void setActive(bool active);
    void setNaturalSizes();
    void arrange();
    void publishFind();
    AwayStrip& awayStrip();
    void showConnection();

    kalmevRepHistCtrl& m_control;
    bool m_active = true; // before the parts, which publish actions
    ShownRecords m_records;
    ImageView m_icon;
    ComboBoxView m_type;
    ListArea* m_area;
    DetailsPane* m_details; // after the area and before the buttons in the order of Tab
    CountLine* m_count;
    TakeAlong* m_takeAlong;
    std::array<ButtonView, 3> m_buttons;
    AwayStrip* m_away = nullptr; // made when the connection is lost for the first time
    bool m_follows = false; // the host's connection
};

}
