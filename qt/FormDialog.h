#pragma once

#include "platform/Form.h"
#include "qt/FormBuilder.h"

#include <QDialog>

class QScrollArea;

namespace health {

class QtDesktop;

// Shows a form as a modal window. Form and window have one idea of the focus: the form learns of everything that moves
// the keyboard focus, and the window does what the form decides.
class FormDialog : public QDialog, public FormObserver {
public:
    FormDialog(Form& form, QtDesktop& desktop, QWidget* parent);
    ~FormDialog() override;

    // Runs until the form is closed.
    void run();
    // Where the row of buttons at the end begins, in the window's pixels.
    int topOfButtons() const;
    Form& form() const { return m_form; }
    // The widget of each control.
    const QHash<Control*, QWidget*>& widgets() const { return m_builder.widgets(); }
    // The user comes back from another form.
    void activateAgain();

    void captionChanged(Form& form) override;
    void focusMoved(Form& form) override;
    void focusSettled(Form& form) override;
    void defaultChanged(Form& form) override;
    void closed(Form& form) override;

    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void findUnlabelled();
    void nameUnlabelled();
    void fitToText();
    void activate();
    void focusFirst();
    QWidget* activeWidget() const;
    void giveFocus(QWidget& widget);
    void followFocus(Control& control);
    static bool isRefusedPress(const QWidget& widget);
    void keepOnScreen();

    Form& m_form;
    FormBuilder m_builder;
    QHash<QObject*, Control*> m_controls; // by the widget that really has the focus
    QList<QWidget*> m_unlabelled;
    QScrollArea* m_scroll = nullptr; // around all, where the screen is too small
    bool m_started = false;
};

}
