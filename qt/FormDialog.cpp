#include "qt/FormDialog.h"

#include "qt/ControlViews.h"
#include "qt/Scale.h"
#include "qt/SpokenName.h"
#include "qt/ViewDesktop.h"
#include "toolkit/QtText.h"

#include <QApplication>
#include <QFocusEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

FormDialog::FormDialog(Form& form, ViewDesktop& desktop, QWidget* parent)
    : QDialog(parent)
    , m_form(form)
    , m_builder(form, desktop)
{
    setWindowTitle(toQString(form.caption()));
    setModal(true);
    setLayout(m_builder.build(form.arrangement()));
    for (auto entry = m_builder.widgets().begin(); entry != m_builder.widgets().end(); ++entry) {
        QWidget* const focused = entry.value()->focusProxy() ? entry.value()->focusProxy() : entry.value();
        m_controls.insert(focused, entry.key());
        focused->installEventFilter(this);
        if (auto* const area = qobject_cast<QAbstractScrollArea*>(focused))
            area->viewport()->installEventFilter(this);
    }
    findUnlabelled();
    nameUnlabelled();
    const QList<QWidget*>& order = m_builder.inTabOrder();
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    m_form.setObserver(this);
    defaultChanged(form);
    fitToText();
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

// Makes the window high enough for the wrapped help texts, and at least as high as the form requests.
void FormDialog::fitToText()
{
    const QSize size = layout()->totalSizeHint();
    const int height = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(size.width()) : size.height();
    resize(size.width(), std::max({ height, size.height(), Scale(*this).pixels(m_form.height()) }));
    keepOnScreen();
}

// Makes a form that is larger than the screen scroll, so that its buttons stay reachable.
void FormDialog::keepOnScreen()
{
    const QRect screen = (parentWidget() ? parentWidget()->screen() : this->screen())->availableGeometry();
    const QSize room(screen.width() * 98 / 100, screen.height() * 93 / 100); // without the window's frame and title
    if (minimumSizeHint().width() > room.width() || minimumSizeHint().height() > room.height()) {
        auto* const body = new QWidget;
        body->setLayout(layout());
        m_scroll = new QScrollArea;
        m_scroll->setWidget(body);
        m_scroll->setWidgetResizable(true);
        m_scroll->setFrameShape(QFrame::NoFrame);
        m_scroll->setFocusPolicy(Qt::NoFocus);
        auto* const around = new QVBoxLayout(this);
        around->setContentsMargins(0, 0, 0, 0);
        around->addWidget(m_scroll);
        resize(size().grownBy({ 0, 0, m_scroll->verticalScrollBar()->sizeHint().width(), 0 }));
    }
    resize(size().boundedTo(room));
}

FormDialog::~FormDialog()
{
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
    m_started = true;
    m_form.Form_Activate();
    if (!m_form.isOpen())
        return;
    if (m_form.activeControl())
        focusMoved(m_form);
    else
        focusFirst();
}

namespace {

// Like Tab, enters a group of options at the chosen one.
bool isPassedOver(const QWidget& widget)
{
    const auto* const option = qobject_cast<const QRadioButton*>(&widget);
    if (!option || option->isChecked())
        return false;
    const auto group = widget.parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(group.begin(), group.end(), [](const QRadioButton* other) { return other->isChecked(); });
}

}

// Focuses the first field that can be used, if the program set no focus.
void FormDialog::focusFirst()
{
    for (QWidget* const widget : m_builder.inTabOrder()) {
        QWidget* const focused = widget->focusProxy() ? widget->focusProxy() : widget;
        if (!m_controls.value(focused)->canBeUsed() || isPassedOver(*widget))
            continue;
        m_form.setFocus(*m_controls.value(focused));
        return;
    }
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
    if (m_scroll)
        m_scroll->ensureWidgetVisible(widget);
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

void FormDialog::textsChanged(Form&) { }

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
            if (m_form.activeControl() != entered && !m_form.isMoving())
                return true;
        }
    }
    const bool pressed = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (pressed && isRefusedPress(*static_cast<QWidget*>(watched)))
        return true;
    return QDialog::eventFilter(watched, event);
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
    ButtonView* const focused = m_builder.buttons().value(m_controls.value(focusWidget()));
    if (ButtonView* const button = focused ? focused : m_builder.buttons().value(m_form.defaultButton()))
        button->click();
}

}
