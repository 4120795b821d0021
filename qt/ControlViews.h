// Widgets that mirror buttons and pictures. A view is the observer of its control and must go before it.
#pragma once

#include "platform/Button.h"

#include <QLabel>
#include <QPushButton>

namespace health {

// Mirrors what all controls share. `widget` is the view's widget.
void mirrorCommon(QWidget& widget, const Control& control, Change change);

// Mirrors the whole common state, for a view that has just been made.
void mirrorCommon(QWidget& widget, const Control& control);

class ButtonView : public QPushButton, public ControlObserver {
public:
    ButtonView(Button& button, QWidget* parent);
    ~ButtonView() override;

    void controlChanged(Control& control, Change change) override;

    // What a click does instead of clicking the control itself.
    void setPress(std::function<void()> press) { m_press = std::move(press); }

private:
    Button& m_button;
    std::function<void()> m_press;
};

class ImageView : public QLabel, public ControlObserver {
public:
    ImageView(Image& image, QWidget* parent);
    ~ImageView() override;

    void controlChanged(Control& control, Change change) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void draw();

    Image& m_image;
};

}
