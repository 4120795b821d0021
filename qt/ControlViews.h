// Widgets that mirror buttons and pictures.
#pragma once

#include "platform/Button.h"
#include "qt/Mirror.h"

#include <QLabel>
#include <QPushButton>

namespace health {

class ButtonView : public Mirror<QPushButton, Button> {
public:
    ButtonView(Button& button, QWidget* parent);

    // What a click does instead of clicking the control itself.
    void setPress(std::function<void()> press) { m_press = std::move(press); }

private:
    bool mirror(Change change) override;

    std::function<void()> m_press;
};

class ImageView : public Mirror<QLabel, Image> {
public:
    ImageView(Image& image, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    bool mirror(Change change) override;
    void draw();
};

}
