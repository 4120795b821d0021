#pragma once

#include "platform/controls/Control.h"

namespace health {

// A control with a caption; "&" in it precedes the access key.
class CaptionedControl : public Control {
public:
    const Text& caption() const { return m_caption; }
    void setCaption(TextView caption) { assign(m_caption, Text(caption), Change::Caption); }

protected:
    ~CaptionedControl() = default;

private:
    Text m_caption;
};

class Button final : public CaptionedControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    // The user presses the button; ignored while it is disabled or hidden.
    void click()
    {
        if (canBeUsed())
            raise(Click);
    }

    // The button's action is running; the front end shows it if that takes long.
    bool isBusy() const { return m_busy; }
    void setBusy(bool busy) { assign(m_busy, busy, Change::Busy); }

    std::function<void()> Click;

private:
    bool m_busy = false;
};

class Label final : public CaptionedControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }
};

// The panel's picture; the front end draws it.
class Image final : public Control {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }
};

}
