// Widgets that mirror the fields of a form. Each is the observer of its control and must go before it.
#pragma once

#include "platform/UpDown.h"
#include "platform/mevContainer.h"

#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QToolButton>

namespace health {

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

}
