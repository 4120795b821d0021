#pragma once

#include "platform/Control.h"

namespace health {

inline constexpr wchar_t EnterKey = L'\r';

// A field for text. Beside the text it carries a tag of the program's own, which nothing but the program changes.
class TextBox : public Control {
public:
    const Text& text() const { return m_text; }
    // Sets the text and raises Changed when it differs.
    void setText(TextView text);

    const Text& tag() const { return m_tag; }
    void setTag(TextView tag) { m_tag = tag; }

    void selectAll() { notify(Change::AllSelected); }

    // The user has changed the text.
    void edit(TextView text);
    // The user presses a key that stands for a character; gives what the program made of it, 0: swallowed.
    wchar_t pressKey(wchar_t key);
    // The user types: each character as a key at the end of the text.
    void type(TextView keys);

    std::function<void()> Changed;
    std::function<void(wchar_t& key)> KeyPress;
    std::function<void()> MouseMove;

private:
    Text m_text;
    Text m_tag;
};

}
