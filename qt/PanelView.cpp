#include "qt/PanelView.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/AwayStrip.h"
#include "qt/CountLine.h"
#include "qt/DetailsPane.h"
#include "qt/FindBar.h"
#include "qt/ListArea.h"
#include "qt/PublishedAction.h"
#include "qt/RecordListView.h"
#include "qt/Scale.h"
#include "qt/TakeAlong.h"
#include "qt/ViewDesktop.h"
#include "qt/print/PrintActions.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QAction>
#include <QActionEvent>
#include <QApplication>
#include <QFocusEvent>

#include <algorithm>
#include <utility>

namespace health {

using namespace Qt::StringLiterals;

PanelView::PanelView(kalmevRepHistCtrl& control, ViewDesktop& desktop)
    : m_control(control)
    , m_records(control)
    , m_icon(control.imgIcon, this)
    , m_type(control.cboType, this)
    , m_area(new ListArea(m_records, desktop, this))
    , m_details(new DetailsPane(m_records, m_area))
    , m_count(new CountLine(m_records, m_area->findBar(), this))
    , m_takeAlong(new TakeAlong(*this, m_records))
    , m_buttons { { { control.cmd[0], this }, { control.cmd[1], this }, { control.cmd[2], this } } }
{
    setAccessibleName(u"Personal Health"_s);
    for (QAction* const action : m_takeAlong->copyActions())
        m_area->list().addToMenu(*action);
    m_type.setAccessibleName(u"Record type to add"_s);
    m_type.setAccessibleDescription(m_type.accessibleName()); // some screen readers speak the value instead of the name
    for (ButtonView& button : m_buttons)
        button.setRefuge(m_area->list());
    m_area->setDetails(*m_details);
    publish(*this, m_details->action(), "View");
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focused) { followFocus(focused); });
    publishFind();
    new PrintActions(m_records, *this);
    m_control.ConnectionChange = [this] { showConnection(); };
    const auto noteAge = [this] {
        if (m_away)
            m_away->setLoaded(m_area->list().loadedAt());
    };
    connect(&m_records, &ShownRecords::reloaded, this, noteAge, Qt::QueuedConnection); // after the list
    setNaturalSizes();
}

AwayStrip& PanelView::awayStrip()
{
    if (!m_away) {
        m_away = new AwayStrip;
        m_area->addStrip(*m_away);
        connect(m_away, &AwayStrip::tryNow, this, [this] { m_control.TryConnection(); });
    }
    return *m_away;
}

void PanelView::showConnection()
{
    const Text& seconds = m_control.connection();
    m_area->list().setAway(!seconds.empty());
    if (!seconds.empty())
        awayStrip().show(toQString(seconds).toInt(), m_area->list().loadedAt());
    else if (m_away)
        m_away->hide();
}

void PanelView::publishFind()
{
    auto* const find = new QAction(u"Find Records"_s, this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, &m_area->findBar(), &FindBar::find);
    publish(*this, *find, "View");
}

// Focus in other parts of the window does not change the active panel.
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
    m_area->list().setQuiet(!active);
    for (QAction* const action : actions())
        action->setShortcutContext(active ? Qt::WindowShortcut : Qt::WidgetWithChildrenShortcut);
}

void PanelView::actionEvent(QActionEvent* event)
{
    if (event->type() == QEvent::ActionAdded)
        event->action()->setShortcutContext(m_active ? Qt::WindowShortcut : Qt::WidgetWithChildrenShortcut);
    QWidget::actionEvent(event);
}

void PanelView::setNaturalSizes()
{
    const Scale scale(*this);
    const auto place = [&](Control& control, QSize size) {
        control.setPlace(
            { control.place().left, control.place().top, scale.twips(size.width()), scale.twips(size.height()) });
    };
    QSize button;
    for (ButtonView& view : m_buttons) {
        view.setContentsMargins(0, 0, 0, Measures(*this).u()); // the prescribed distance is that of frames with shadows
        button = button.expandedTo(view.sizeHint());
    }
    for (Button& command : m_control.cmd)
        place(command, button);
    place(m_control.imgIcon, m_icon.sizeHint());
    // Wide enough for the longest record type, independent of the patient's list.
    const int letters = m_type.fontMetrics().horizontalAdvance(u"  To add, select a form..."_s) * 3 / 2;
    place(m_control.cboType, QSize(letters, m_type.sizeHint().height()));
}

void PanelView::arrange()
{
    const Scale scale(*this);
    m_control.UserControl_Resize(scale.twips(width()), scale.twips(height()));
    // The count keeps away from the list of types, which the control may hide.
    const QRect row = m_type.geometry();
    const int left = row.right() + Measures(*this).captionGap();
    const int right = m_area->geometry().right();
    m_count->setGeometry(left, row.top(), std::max(0, right + 1 - left), row.height());
}

ViewState PanelView::viewState() const { return m_area->viewState(); }

void PanelView::setViewState(const ViewState& state) { m_area->setViewState(state); }

void PanelView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_area->findBar().isOpen())
        m_area->findBar().close();
    else
        QWidget::keyPressEvent(event);
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
    // A panel shown beside an active one stays inactive until it gets the focus.
    const auto panels = window()->findChildren<QWidget*>();
    setActive(std::none_of(panels.begin(), panels.end(), [this](QWidget* widget) {
        const auto* const panel = dynamic_cast<PanelView*>(widget);
        return panel && panel != this && panel->m_active;
    }));
    m_control.UserControl_Show();
    if (!std::exchange(m_follows, true))
        m_control.FollowConnection();
}

// Not a focus proxy: Tab would go past the type list.
void PanelView::focusInEvent(QFocusEvent* event) { m_area->list().setFocus(event->reason()); }

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
        // Again later: Qt notifies the child widgets after the panel.
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
