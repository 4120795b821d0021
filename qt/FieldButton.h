#pragma once

#include "toolkit/ControlPainting.h"

#include <QToolButton>

namespace health {

// A small button inside a field, drawn as a symbol without a frame. Keyboard users have keys for its action: it never
// takes the focus.
class FieldButton : public QToolButton {
public:
    explicit FieldButton(Symbol symbol, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Symbol m_symbol;
};

}
