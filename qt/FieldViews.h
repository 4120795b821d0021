// Widgets that mirror the fields of a form. Each is the observer of its control and must go before it.
#pragma once

#include "platform/CheckBox.h"
#include "platform/CheckList.h"
#include "platform/OptionButton.h"
#include "platform/TextBox.h"
#include "platform/UpDown.h"
#include "platform/mevContainer.h"
#include "platform/mevZvDate.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QToolButton>

namespace health {

class QtDesktop;

// Gives a control the words that stand beside it as the name that a screen reader speaks. A button keeps its caption,
// unless that is "...": it finds what the words name.
void nameControl(QWidget& control, QString words);

class LabelView : public QLabel, public ControlObserver {
public:
    explicit LabelView(Label& label);
    ~LabelView() override { m_label.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;

    // Names the controls by the caption, now and whenever it changes. Labels among them speak for themselves.
    void speakFor(const QList<QWidget*>& controls);

private:
    void mirrorCaption();
    void mirrorColour();
    void speakCaption();

    Label& m_label;
    QList<QPointer<QWidget>> m_spokenFor;
};

class FrameView : public QGroupBox, public ControlObserver {
public:
    explicit FrameView(mevContainer& container);
    ~FrameView() override { m_container.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;

private:
    mevContainer& m_container;
};

class TextBoxView : public QLineEdit, public ControlObserver {
public:
    explicit TextBoxView(TextBox& textBox);
    ~TextBoxView() override { m_textBox.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    TextBox& m_textBox;
};

// A field of several lines. Tab leaves it; Enter makes a new line.
class TextAreaView : public QPlainTextEdit, public ControlObserver {
public:
    explicit TextAreaView(TextBox& textBox);
    ~TextAreaView() override;
    void controlChanged(Control& control, Change change) override;
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    TextBox& m_textBox;
};

class CheckBoxView : public QCheckBox, public ControlObserver {
public:
    explicit CheckBoxView(CheckBox& checkBox);
    ~CheckBoxView() override { m_checkBox.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;

private:
    CheckBox& m_checkBox;
};

class OptionButtonView : public QRadioButton, public ControlObserver {
public:
    explicit OptionButtonView(OptionButton& option);
    ~OptionButtonView() override { m_option.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;

private:
    void mirrorChoice();

    OptionButton& m_option;
};

class CheckListView : public QListWidget, public ControlObserver {
public:
    explicit CheckListView(CheckList& list);
    ~CheckListView() override { m_list.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;
    QSize sizeHint() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void mirrorItems();
    void mirrorChecks();

    CheckList& m_list;
    bool m_mirroring = false;
};

// The two arrows beside a number's field.
class UpDownView : public QWidget, public ControlObserver {
public:
    explicit UpDownView(UpDown& upDown);
    ~UpDownView() override { m_upDown.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;
    void setSpokenName(const QString& name);

private:
    UpDown& m_upDown;
    QList<QToolButton*> m_arrows;
};

// A line for a date in any of the forms that mevZvDate understands, with a calendar.
class DateView : public QWidget, public ControlObserver {
public:
    DateView(mevZvDate& date, QtDesktop& desktop);
    ~DateView() override { m_date.setObserver(nullptr); }
    void controlChanged(Control& control, Change change) override;

    // Hands what was typed to the control; false when the form did not take it as it was.
    bool commit();
    QLineEdit* line() { return m_line; }
    void setSpokenName(const QString& name);

private:
    void mirrorOptions();
    void openCalendar();

    mevZvDate& m_date;
    QtDesktop& m_desktop;
    QLineEdit* m_line;
    QToolButton* m_button;
};

}
