#include "qt/FormDialog.h"

#include "qt/ControlViews.h"
#include "qt/DateView.h"
#include "qt/FieldViews.h"
#include "qt/QtDesktop.h"
#include "qt/QtText.h"
#include "qt/Scale.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QTimer>

#include <algorithm>

namespace health {

FormDialog::FormDialog(Form& form, QtDesktop& desktop, QWidget* parent)
    : QDialog(parent)
    , m_form(form)
    , m_builder(form, desktop)
{
    setWindowTitle(toQString(form.caption()));
    setLayout(m_builder.build(form.arrangement()));
    for (auto entry = m_builder.widgets().begin(); entry != m_builder.widgets().end(); ++entry) {
        QWidget* const focused = entry.value()->focusProxy() ? entry.value()->focusProxy() : entry.value();
        m_controls.insert(focused, entry.key());
        focused->installEventFilter(this);
        if (auto* const button = dynamic_cast<ButtonView*>(entry.value())) {
            auto* const core = static_cast<Button*>(entry.key());
            button->setPress([this, core] {
                if (core == m_form.cancelButton() || commitDate())
                    m_form.press(*core);
            });
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

// As high as the wrapped help texts need at this width, and as the form wants to be; the usual first size may be less
// on a small screen.
void FormDialog::fitToText()
{
    const QSize size = layout()->totalSizeHint();
    const int height = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(size.width()) : size.height();
    resize(size.width(), std::max({ height, size.height(), Scale(*this).pixels(m_form.height) }));
}

// Where the program set no focus: the first field that can be used. The form is told, not the widget: a window that is
// not active yet gives no news of its focus, and what is typed first would never be judged.
void FormDialog::focusFirst()
{
    for (QWidget* const widget : m_builder.inTabOrder()) {
        QWidget* const focused = widget->focusProxy() ? widget->focusProxy() : widget;
        if (!widget->isEnabled() || !widget->isVisible())
            continue;
        m_form.setFocus(*m_controls.value(focused));
        if (auto* const line = qobject_cast<QLineEdit*>(focused))
            line->selectAll();
        return;
    }
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
    QTimer::singleShot(0, this, [this] {
        m_started = true;
        m_form.Form_Activate();
        if (!m_form.activeControl())
            focusFirst();
    });
    exec();
}

// --- What the form does ---

void FormDialog::captionChanged(Form& form)
{
    setWindowTitle(toQString(form.caption()));
    nameUnlabelled();
}

void FormDialog::focusMoved(Form& form)
{
    QWidget* const widget = m_builder.widgets().value(form.activeControl());
    if (widget && !widget->hasFocus())
        widget->setFocus(Qt::OtherFocusReason);
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

// What was typed into a date is handed over before anything is saved; false when the form refused it.
bool FormDialog::commitDate()
{
    QWidget* const focused = focusWidget();
    auto* const date = focused ? dynamic_cast<DateView*>(focused->parentWidget()) : nullptr;
    return !date || date->commit();
}

bool FormDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        const bool real =
            reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
        Control* const entered = m_controls.value(watched);
        // A button under the mouse: the click that follows leaves the field, and may be stopped by that.
        const bool clicked = reason == Qt::MouseFocusReason && dynamic_cast<ButtonView*>(watched);
        if (real && !clicked && event->type() == QEvent::FocusIn)
            focusEntered(*entered); // at once: of keys typed fast none may be missed
        auto* const date = dynamic_cast<DateView*>(watched->parent());
        Control* const next = m_controls.value(QApplication::focusWidget());
        if (real && date && event->type() == QEvent::FocusOut && next && next != m_form.cancelButton())
            date->commit();
    }
    return QDialog::eventFilter(watched, event);
}

void FormDialog::focusEntered(Control& control)
{
    if (m_form.isOpen() && m_controls.value(QApplication::focusWidget()) == &control)
        m_form.moveFocus(control);
}

void FormDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_started && m_form.isOpen())
        m_form.Form_Activate();
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
