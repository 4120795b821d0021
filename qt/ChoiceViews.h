// Widgets that mirror choices.
#pragma once

#include "platform/CheckBox.h"
#include "platform/CheckList.h"
#include "platform/OptionButton.h"
#include "qt/Mirror.h"

#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>

namespace health {

class CheckBoxView : public Mirror<QCheckBox, CheckBox> {
public:
    explicit CheckBoxView(CheckBox& checkBox);

private:
    void mirror(Change change) override;
};

class OptionButtonView : public Mirror<QRadioButton, OptionButton> {
public:
    explicit OptionButtonView(OptionButton& option);

private:
    void mirror(Change change) override;
    void mirrorChoice();
};

class CheckListView : public Mirror<QListWidget, CheckList> {
public:
    explicit CheckListView(CheckList& list);
    QSize sizeHint() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void mirror(Change change) override;
    void mirrorItems();
    void mirrorChecks();

    bool m_mirroring = false;
};

}
