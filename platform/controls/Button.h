#pragma once

#include "platform/controls/Control.h"

namespace health {

// A control with a caption in which "&" stands before the access key.
class CaptionedControl : public Control {
public:
    const Text& caption() const { return m_caption; }
    void setCaption(TextView caption) { assign(m_caption, Text(caption), Change::Caption); }

protected:
    ~CaptionedControl() = default;

private:
    Text m_caption;
};

class Button : public CaptionedControl {
public:
    // The user presses the button; nothing happens while it is disabled or hidden.
    void click()
    {
        if (canBeUsed())
            raise(Click);
    }

    std::function<void()> Click;
};

class Label : public CaptionedControl { };

// A picture; the front end knows which.
class Image : public Control { };

}
