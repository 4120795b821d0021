// Widgets that mirror labels, frames and arrows.
#pragma once

#include "platform/controls/UpDown.h"
#include "platform/controls/mevContainer.h"
#include "qt/FieldButton.h"
#include "qt/Mirror.h"
#include "qt/SpokenName.h"

#include <QGroupBox>
#include <QLabel>
#include <QPointer>

namespace health {

class HeadingStyle;

class LabelView : public Mirror<QLabel, Label> {
public:
    explicit LabelView(Label& label);

    // Names the widgets by the caption, now and whenever it changes. Labels among them describe the others.
    void speakFor(const QList<QWidget*>& controls);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

private:
    void mirror(Change change) override;
    void mirrorCaption();
    void mirrorColour();
    void describe(const QList<QWidget*>& controls);
    void speakCaption();

    QList<QPointer<QWidget>> m_spokenFor;
    QList<QPointer<QWidget>> m_describes;
};

// A group of fields: its caption is a heading, not a part of a frame. Without a caption it shows nothing.
class FrameView : public Mirror<QGroupBox, mevContainer> {
public:
    explicit FrameView(mevContainer& container);

    // A quiet text beside the heading.
    void setAside(const QString& text);

private:
    void mirror(Change change) override;

    HeadingStyle* m_heading;
};

// The two arrows inside or beside a number's field.
class UpDownView : public Mirror<QWidget, UpDown>, public SpokenParts {
public:
    explicit UpDownView(UpDown& upDown);
    QSize sizeHint() const override;
    void setSpokenName(const QString& name) override;

private:
    QList<FieldButton*> m_arrows;
};

}
