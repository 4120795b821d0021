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

// A control that runs an action.
class CommandControl : public CaptionedControl {
public:
    // Why the action cannot run now, in words for the user; empty while it can, or if nobody has said why.
    const Text& refusal() const { return m_refusal; }
    void setRefusal(TextView refusal) { assign(m_refusal, Text(refusal), Change::Refusal); }

protected:
    ~CommandControl() = default;

private:
    Text m_refusal;
};

class Button final : public CommandControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    // The user presses the button, or its access key. While it is disabled, only raises Refused.
    void click()
    {
        if (canBeUsed())
            raise(Click);
        else if (!refusal().empty())
            raise(Refused);
    }

    // The button's action is running; the front end shows it if that takes long.
    bool isBusy() const { return m_busy; }
    void setBusy(bool busy) { assign(m_busy, busy, Change::Busy); }

    std::function<void()> Click;
    std::function<void()> Refused; // the user wants the action, and there is a refusal()

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
