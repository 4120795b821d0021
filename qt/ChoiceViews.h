// Widgets that mirror choices.
#pragma once

#include "platform/controls/CheckBox.h"
#include "platform/controls/CheckList.h"
#include "platform/controls/OptionButton.h"
#include "qt/Mirror.h"
#include "qt/PressedAtOnce.h"
#include "toolkit/FocusFrame.h"

#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>

namespace health {

class CheckBoxView : public Mirror<PressedAtOnce<QCheckBox>, CheckBox> {
public:
    explicit CheckBoxView(CheckBox& checkBox);

private:
    void mirror(Change change) override;
};

class OptionButtonView : public Mirror<PressedAtOnce<QRadioButton>, OptionButton> {
public:
    explicit OptionButtonView(OptionButton& option);

private:
    void mirror(Change change) override;
    void mirrorChoice();
};

class CheckListView : public Mirror<FocusFramed<QListWidget>, CheckList> {
public:
    explicit CheckListView(CheckList& list);
    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void mirror(Change change) override;
    void mirrorItems();
    void mirrorChecks();
    int rowHeight() const;

    bool m_mirroring = false;
};

// The first focus passes over an option of a group in which another one is chosen.
bool isPassedOver(const QWidget& widget);

}
