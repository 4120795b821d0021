#include "qt/FormDialog.h"

#include "qt/ControlViews.h"
#include "qt/FieldViews.h"
#include "qt/QtDesktop.h"
#include "qt/Scale.h"
#include "toolkit/QtText.h"

#include <QApplication>
#include <QFocusEvent>
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

FormDialog::FormDialog(Form& form, QtDesktop& desktop, QWidget* parent)
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
        if (auto* const button = dynamic_cast<ButtonView*>(entry.value())) {
            auto* const core = static_cast<Button*>(entry.key());
            button->setPress([this, core] { m_form.press(*core); });
        }
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

// What no label named.
void FormDialog::findUnlabelled()
{
    for (QWidget* const widget : m_builder.inTabOrder()) {
        const QWidget* const focused = widget->focusProxy() ? widget->focusProxy() : widget;
        const auto* const button = qobject_cast<QAbstractButton*>(widget);
        const bool speaks = button && button->text() != QStringLiteral("...");
        if (!speaks && focused->accessibleName().isEmpty())
            m_unlabelled.append(widget);
    }
}

// Screen readers speak of it by the caption around it: its frame's, or the window's.
void FormDialog::nameUnlabelled()
{
    for (QWidget* const widget : m_unlabelled) {
        const auto* const frame = qobject_cast<QGroupBox*>(widget->parentWidget());
        nameControl(*widget, frame && !frame->title().isEmpty() ? frame->title() : windowTitle());
    }
}

// Makes the window as high as the wrapped help texts need at this width, and at least as high as the form asks for.
void FormDialog::fitToText()
{
    const QSize size = layout()->totalSizeHint();
    const int height = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(size.width()) : size.height();
    resize(size.width(), std::max({ height, size.height(), Scale(*this).pixels(m_form.height) }));
    keepOnScreen();
}

// A form that is larger than the screen scrolls, so that its buttons can be reached.
void FormDialog::keepOnScreen()
{
    const QRect screen = (parentWidget() ? parentWidget()->screen() : this->screen())->availableGeometry();
    const QSize room(screen.width() * 98 / 100, screen.height() * 93 / 100); // its frame and title need some, too
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
    // Losing its widgets is no leaving of a field.
    for (auto entry = m_controls.begin(); entry != m_controls.end(); ++entry)
        entry.key()->removeEventFilter(this);
}

void FormDialog::run()
{
    m_form.open();
    show();
    // Before any key is taken: what is typed at once must meet the loaded form and its own focus.
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

// Of a group of options the user enters the chosen one, as by Tab.
bool isPassedOver(const QWidget& widget)
{
    const auto* const option = qobject_cast<const QRadioButton*>(&widget);
    if (!option || option->isChecked())
        return false;
    const auto group = widget.parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(group.begin(), group.end(), [](const QRadioButton* other) { return other->isChecked(); });
}

}

// Where the program set no focus: the first field that can be used.
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

// Entering a field selects its text, by whatever way: what is typed then replaces it.
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

// A box in between may have left the keyboard elsewhere.
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
    for (auto entry = m_builder.widgets().begin(); entry != m_builder.widgets().end(); ++entry) {
        if (auto* const button = dynamic_cast<ButtonView*>(entry.value()))
            button->setDefault(entry.key() == form.defaultButton());
    }
}

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
        setAttribute(Qt::WA_KeyboardFocusChange); // the focus frame is drawn whatever moved the focus
        if (Control* const entered = m_controls.value(watched); entered && m_started) {
            followFocus(*entered); // at once: of keys typed fast none may be missed
            // Where the field before kept the focus, this one must not believe that it has it.
            if (m_form.activeControl() != entered && !m_form.isMoving())
                return true;
        }
    }
    const bool pressed = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (pressed && isRefusedPress(*static_cast<QWidget*>(watched)))
        return true;
    return QDialog::eventFilter(watched, event);
}

// The keyboard focus is in the control's widget, whatever moved it there: Tab, a click, a key, the window system after
// a box. While the form itself moves the focus, it has the last word.
void FormDialog::followFocus(Control& control)
{
    if (!m_form.isOpen() || m_form.isMoving() || m_form.activeControl() == &control)
        return;
    if (m_controls.value(QApplication::focusWidget()) == &control)
        m_form.moveFocus(control);
}

// A click on a field that did not get the focus, since the field before kept it, does nothing else either.
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
        return; // of the key that opened the form, perhaps
    auto* const focused = dynamic_cast<ButtonView*>(focusWidget());
    QWidget* const fallback = m_builder.widgets().value(m_form.defaultButton());
    if (auto* const button = focused ? focused : dynamic_cast<ButtonView*>(fallback))
        button->click();
}

}
