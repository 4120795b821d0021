#include "qt/FormDialog.h"

#include "qt/BodyArea.h"
#include "qt/ChoiceViews.h"
#include "qt/ControlViews.h"
#include "qt/FormTexts.h"
#include "qt/HeadingStrip.h"
#include "qt/NoticeLine.h"
#include "qt/Scale.h"
#include "qt/SpokenName.h"
#include "qt/SummaryLine.h"
#include "qt/ToneLabel.h"
#include "qt/ViewDesktop.h"
#include "toolkit/Hairline.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QAccessible>
#include <QApplication>
#include <QFocusEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <exception>
#include <utility>

namespace health {

using namespace Qt::StringLiterals;

namespace {
constexpr int PlacingMilliseconds = 20;
}

FormDialog::FormDialog(Form& form, ViewDesktop& desktop, QWidget* parent)
    : QDialog(parent)
    , m_form(form)
    , m_builder(form, desktop, *this)
    , m_heading(new HeadingStrip)
    , m_notice(new NoticeLine([this] { m_form.followNotice(); }))
    , m_summary(new SummaryLine([this](bool isOpen) { makeRoomForList(isOpen); }))
{
    setWindowTitle(toQString(form.caption()));
    setModal(true);
    build();
    watchControls();
    findUnlabelled();
    nameUnlabelled();
    setOrder();
    m_form.setObserver(this);
    m_texts = std::make_unique<FormTexts>(
        form, m_builder, FormTexts::Places { *m_heading, *m_notice, *m_summary }, [this] { askRefresh(); });
    defaultChanged(form);
    fit();
}

// The heading, notice, summary and buttons stay; only the body scrolls if the screen is too low.
void FormDialog::build()
{
    const FormBuilder::Parts parts = m_builder.build(m_form.arrangement());
    m_body = new BodyArea(parts.body);
    m_foot = buildFoot(parts.buttons);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_heading);
    layout->addWidget(m_body, 1);
    layout->addWidget(m_foot);
    for (const auto& row : m_builder.notes())
        row->beside().showRoom();
}

QWidget* FormDialog::buildFoot(QLayout* buttons)
{
    const Measures measures(*this);
    auto* const inside = new QVBoxLayout;
    const int margin = measures.formMargin();
    inside->setContentsMargins(margin, measures.units(3), margin, measures.groupGap());
    inside->setSpacing(measures.units(3));
    inside->addWidget(m_notice);
    inside->addWidget(m_summary);
    if (buttons)
        inside->addLayout(buttons);
    auto* const foot = new QWidget;
    auto* const layout = new QVBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new Hairline);
    layout->addLayout(inside);
    auto* const key = new QShortcut(QKeySequence(Qt::Key_F2), this);
    connect(key, &QShortcut::activated, m_summary, &SummaryLine::toggle);
    return foot;
}

void FormDialog::watchControls()
{
    for (auto entry = m_builder.widgets().begin(); entry != m_builder.widgets().end(); ++entry) {
        QWidget* const focused = entry.value()->focusProxy() ? entry.value()->focusProxy() : entry.value();
        m_controls.insert(focused, entry.key());
        focused->installEventFilter(this);
        if (auto* const area = qobject_cast<QAbstractScrollArea*>(focused))
            area->viewport()->installEventFilter(this);
    }
}

// Tab follows the arrangement; the notice's button comes last.
void FormDialog::setOrder()
{
    QList<QWidget*> order = m_builder.inTabOrder();
    order.append(&m_notice->button());
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

// Collects the widgets that no label has named.
void FormDialog::findUnlabelled()
{
    for (QWidget* const widget : m_builder.inTabOrder()) {
        const QWidget* const focused = widget->focusProxy() ? widget->focusProxy() : widget;
        const auto* const button = qobject_cast<QAbstractButton*>(widget);
        const bool speaks = button && button->text() != u"..."_s;
        if (!speaks && focused->accessibleName().isEmpty())
            m_unlabelled.append(widget);
    }
}

// Names these widgets for screen readers by the caption of their frame, or of the window.
void FormDialog::nameUnlabelled()
{
    for (QWidget* const widget : m_unlabelled) {
        const auto* const frame = qobject_cast<QGroupBox*>(widget->parentWidget());
        nameControl(*widget, frame && !frame->title().isEmpty() ? frame->title() : windowTitle());
    }
}

// --- Size ---

// The screen without the window's frame and title.
QRect FormDialog::room() const
{
    QRect screen = (parentWidget() ? parentWidget()->screen() : this->screen())->availableGeometry();
    screen.setSize({ screen.width() * 98 / 100, screen.height() * 93 / 100 });
    return screen;
}

// Changed texts invalidate nested layouts one after the other, by posted events.
void FormDialog::settleLayouts() { QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest); }

int FormDialog::neededHeight(int width) const
{
    const QLayout* const foot = m_foot->layout();
    const int heading = m_heading->isHidden() ? 0 : m_heading->heightForWidth(width);
    const int below = foot->hasHeightForWidth() ? foot->totalHeightForWidth(width) : foot->totalSizeHint().height();
    // The form does not know of the heading and the margins.
    const int requested = m_form.height() == 0 ? 0 : Scale(*this).pixels(m_form.height()) + heading + below / 2;
    return std::max(heading + m_body->heightFor(width) + below, requested);
}

int FormDialog::neededWidth() const
{
    const int heading = m_heading->isHidden() ? 0 : m_heading->sizeHint().width();
    return std::max({ m_body->sizeHint().width(), m_foot->sizeHint().width(), heading });
}

// As wide as the fields and a heading in one line, as high as all texts need, at least as high as the form requests.
void FormDialog::fit()
{
    settleLayouts();
    const QSize most = room().size();
    if (neededWidth() > most.width()) {
        m_builder.giveUpRooms();
        settleLayouts();
    }
    const int shown = std::min(neededWidth(), most.width());
    resize(shown, std::min(neededHeight(shown), most.height()));
    m_body->placeBars();
}

// Again, because the window was placed with its former size. Its frame may not be known yet: the title must stay on the
// screen.
void FormDialog::place()
{
    adjustPosition(parentWidget());
    const int top = screen()->availableGeometry().top() + style()->pixelMetric(QStyle::PM_TitleBarHeight);
    if (geometry().top() < top)
        move(x(), top);
}

// Longer texts enlarge the window downwards, as far as the screen permits.
void FormDialog::grow()
{
    // While the window manager is still placing the window, a new size would move it into the corner of the screen.
    if (windowHandle() && isVisible() && !windowHandle()->isExposed()) {
        QTimer::singleShot(PlacingMilliseconds, this, &FormDialog::grow);
        return;
    }
    settleLayouts();
    const QRect screen = this->screen()->availableGeometry();
    const int most = std::min(room().height(), screen.bottom() - frameGeometry().top());
    const int height = std::min(neededHeight(width()), most);
    if (height > this->height())
        resize(width(), height);
    m_body->placeBars();
}

// The list of what will be saved enlarges the window while it is open.
void FormDialog::makeRoomForList(bool isOpen)
{
    if (isOpen)
        m_closedHeight = height();
    else
        resize(width(), std::min(height(), m_closedHeight));
    grow();
}

// --- Texts ---

void FormDialog::askRefresh()
{
    if (!std::exchange(m_refreshAsked, true))
        QMetaObject::invokeMethod(this, &FormDialog::refresh, Qt::QueuedConnection);
}

void FormDialog::refresh()
{
    m_refreshAsked = false;
    try {
        m_texts->refresh();
    } catch (const std::exception&) {
        return; // the host is gone: the texts stay, and the next action reports it
    }
    if (m_isFitted)
        grow();
}

FormDialog::~FormDialog()
{
    m_texts.reset();
    m_form.setObserver(nullptr);
    // Destroying the widgets must not raise LostFocus.
    for (auto entry = m_controls.begin(); entry != m_controls.end(); ++entry)
        entry.key()->removeEventFilter(this);
}

void FormDialog::run()
{
    m_form.open();
    show();
    // Before the event loop runs: fast typing must reach the loaded form and its focused control.
    activate();
    if (m_form.isOpen())
        exec();
}

void FormDialog::activate()
{
    m_form.Form_Activate();
    m_started = true; // the focus that the window system gave before was not the user's choice
    if (!m_form.isOpen())
        return;
    refresh();
    fit();
    place();
    m_isFitted = true;
    if (m_form.activeControl())
        focusMoved(m_form);
    else
        focusFirst();
}

// Focuses the first field that can be used, or a button if there is no such field.
void FormDialog::focusFirst()
{
    Control* first = nullptr;
    for (QWidget* const widget : m_builder.inTabOrder()) {
        Control* const control = m_controls.value(widget->focusProxy() ? widget->focusProxy() : widget);
        if (!control->canBeUsed() || isPassedOver(*widget))
            continue;
        const bool isButton = dynamic_cast<Button*>(control);
        if (!first || !isButton)
            first = control;
        if (!isButton)
            break;
    }
    if (first)
        m_form.setFocus(*first);
}

void FormDialog::activateAgain()
{
    if (m_form.isOpen())
        m_form.Form_Activate();
}

int FormDialog::topOfButtons() const
{
    const QWidget* const last = m_builder.inTabOrder().isEmpty() ? nullptr : m_builder.inTabOrder().constLast();
    return last ? last->mapTo(this, QPoint(0, 0)).y() : height();
}

// --- What the form does ---

void FormDialog::captionChanged(Form& form)
{
    setWindowTitle(toQString(form.caption()));
    nameUnlabelled();
}

// Selects the text of the field that gets the focus, so that typing replaces it.
void FormDialog::focusMoved(Form&)
{
    QWidget* const widget = activeWidget();
    if (!widget)
        return;
    giveFocus(*widget);
    if (auto* const line = qobject_cast<QLineEdit*>(widget))
        line->selectAll();
    showFocused();
    askRefresh(); // some texts are those of the field with the focus
}

void FormDialog::showFocused()
{
    const auto& notes = m_builder.notes();
    const auto own = std::ranges::find_if(notes, [this](const auto& row) { return row->hasFocus(m_form); });
    if (QWidget* const widget = activeWidget(); widget && m_body->isAncestorOf(widget))
        m_body->show(*widget, own == notes.end() ? nullptr : &(*own)->below());
}

// A message box during the move may have left the keyboard focus elsewhere.
void FormDialog::focusSettled(Form&)
{
    if (QWidget* const widget = activeWidget())
        giveFocus(*widget);
}

QWidget* FormDialog::activeWidget() const
{
    QWidget* const widget = m_builder.widgets().value(m_form.activeControl());
    return widget && widget->focusProxy() ? widget->focusProxy() : widget;
}

void FormDialog::giveFocus(QWidget& widget)
{
    if (!widget.hasFocus())
        widget.setFocus(Qt::OtherFocusReason);
}

void FormDialog::defaultChanged(Form& form)
{
    for (auto entry = m_builder.buttons().begin(); entry != m_builder.buttons().end(); ++entry)
        entry.value()->setDefault(entry.key() == form.defaultButton());
}

void FormDialog::textsChanged(Form&) { askRefresh(); }

void FormDialog::closed(Form&) { done(Accepted); }

// --- What the user does ---

void FormDialog::reject()
{
    if (m_form.cancelButton())
        m_form.press(*m_form.cancelButton());
    else
        m_form.close();
}

bool FormDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        setAttribute(Qt::WA_KeyboardFocusChange); // draws the focus frame also after clicks
        if (Control* const entered = m_controls.value(watched); entered && m_started) {
            followFocus(*entered); // synchronously, so that fast typing is not lost
            // If the previous field keeps the focus, hide the event from this one.
            if (m_form.activeControl() != entered && !m_form.isMoving()) {
                QMetaObject::invokeMethod(this, &FormDialog::speakFocus, Qt::QueuedConnection);
                return true;
            }
        }
    }
    const bool pressed = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (pressed && isRefusedPress(*static_cast<QWidget*>(watched)))
        return true;
    return QDialog::eventFilter(watched, event);
}

// Qt reports the refused field's focus to screen readers after that of the field that kept it.
void FormDialog::speakFocus()
{
    QWidget* const focused = focusWidget();
    if (!focused || !QAccessible::isActive())
        return;
    QAccessibleEvent event(focused, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

// Reports a move of the keyboard focus by Tab, a click, a key, or the window system after a box. Moves by the form
// itself are not reported back.
void FormDialog::followFocus(Control& control)
{
    if (!m_form.isOpen() || m_form.isMoving() || m_form.activeControl() == &control)
        return;
    if (m_controls.value(QApplication::focusWidget()) == &control)
        m_form.moveFocus(control);
}

// Ignores a click on a field that could not get the focus because the previous field kept it.
bool FormDialog::isRefusedPress(const QWidget& widget)
{
    const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget());
    const QWidget& focused = area && area->viewport() == &widget ? *area : widget;
    return (focused.focusPolicy() & Qt::ClickFocus) && focused.isActiveWindow() && focused.isEnabled()
        && !focused.hasFocus();
}

void FormDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    if (event->isAutoRepeat())
        return; // the user may still hold the key that opened the form
    if (m_notice->button().hasFocus()) {
        m_notice->button().click();
        return;
    }
    ButtonView* const focused = m_builder.buttons().value(m_controls.value(focusWidget()));
    if (ButtonView* const button = focused ? focused : m_builder.buttons().value(m_form.defaultButton()))
        button->click();
}

}
