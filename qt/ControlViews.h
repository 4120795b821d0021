// Widgets that mirror buttons and pictures.
#pragma once

#include "platform/controls/Button.h"
#include "qt/BusyMark.h"
#include "qt/Mirror.h"
#include "qt/PressedAtOnce.h"

#include <QLabel>
#include <QPushButton>

class QShortcut;

namespace health {

// While a button is disabled, its tip says why, and its access key lets the button say it.
class ButtonView : public Mirror<PressedAtOnce<QPushButton>, Button> {
public:
    ButtonView(Button& button, QWidget* parent);

    // Replaces the action of a click; by default it clicks the control.
    void setPress(std::function<void()> press) { m_press = std::move(press); }

    // Whether the caption's access key presses the button; it is underlined in either case.
    void setAccessKeyUsed(bool used);

    // Whether this is the form's button that saves; it is drawn filled.
    void setFilled(bool filled);

    // The widget that takes the focus when the focused button is disabled.
    void setRefuge(QWidget& refuge) { m_refuge = &refuge; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void mirror(Change change) override;
    void keepFocusNear();
    void mirrorRefusal();

    BusyMark* m_busy;
    bool m_accessKeyUsed = true;
    QShortcut* m_refusedKey = nullptr; // of the panel around the button: a disabled widget gets no keys
    QWidget* m_refuge = nullptr;
    bool m_comesBack = false; // the focus returns if the button is enabled again within this event
    std::function<void()> m_press;
};

class ImageView : public Mirror<QLabel, Image> {
public:
    ImageView(Image& image, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    void mirror(Change change) override;
    void draw();
};

}
