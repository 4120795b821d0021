// Widgets that mirror buttons and pictures.
#pragma once

#include "platform/controls/Button.h"
#include "qt/Mirror.h"
#include "qt/PressedAtOnce.h"

#include <QLabel>
#include <QPushButton>

namespace health {

class ButtonView : public Mirror<PressedAtOnce<QPushButton>, Button> {
public:
    ButtonView(Button& button, QWidget* parent);

    // What a click does instead of clicking the control itself.
    void setPress(std::function<void()> press) { m_press = std::move(press); }

    // Whether the caption's access key presses the button; it is underlined in any case.
    void setAccessKeyUsed(bool used);

    // Where the focus goes when the button with the focus cannot be used any more.
    void setRefuge(QWidget& refuge) { m_refuge = &refuge; }

private:
    void mirror(Change change) override;
    void keepFocusNear();

    bool m_accessKeyUsed = true;
    QWidget* m_refuge = nullptr;
    bool m_comesBack = false; // the focus, when the button can be used again at once
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
