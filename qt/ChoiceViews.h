// Widgets that mirror choices. Each is the observer of its control and must go before it.
#pragma once

#include "platform/CheckBox.h"
#include "platform/CheckList.h"
#include "platform/OptionButton.h"

#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>

namespace health {

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

}
