#pragma once

#include "platform/Form.h"
#include "qt/FormBuilder.h"

#include <QDialog>

namespace health {

class QtDesktop;

// Shows a form as a modal window. Tells the form where the user moves the focus; a field is settled before any button's
// click, also when a key pressed the button, but for Cancel.
class FormDialog : public QDialog, public FormObserver {
public:
    FormDialog(Form& form, QtDesktop& desktop, QWidget* parent);
    ~FormDialog() override;

    // Runs until the form is closed.
    void run();

    void captionChanged(Form& form) override;
    void focusMoved(Form& form) override;
    void defaultChanged(Form& form) override;
    void closed(Form& form) override;

    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void findUnlabelled();
    void nameUnlabelled();
    void fitToText();
    void focusFirst();
    void focusEntered(Control& control);
    bool commitDate();

    Form& m_form;
    FormBuilder m_builder;
    QHash<QObject*, Control*> m_controls; // by the widget that really has the focus
    QList<QWidget*> m_unlabelled;
    bool m_started = false;
};

}
