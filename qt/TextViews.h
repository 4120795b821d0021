// Widgets that mirror fields for text.
#pragma once

#include "platform/controls/TextBox.h"
#include "qt/EntryLine.h"
#include "qt/Mirror.h"
#include "toolkit/FocusFrame.h"

#include <QPlainTextEdit>

namespace health {

class TextBoxView : public Mirror<EntryLine, TextBox> {
public:
    explicit TextBoxView(TextBox& textBox);

protected:
    void mirror(Change change) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};

// A field of several lines. Tab leaves it; Enter inserts a line break.
class TextAreaView : public Mirror<FocusFramed<QPlainTextEdit>, TextBox> {
public:
    explicit TextAreaView(TextBox& textBox);
    ~TextAreaView() override;
    QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void mirror(Change change) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void alignText();
};

}
