// Widgets that mirror fields for text. Each is the observer of its control and must go before it.
#pragma once

#include "platform/TextBox.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace health {

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

}
