#pragma once

#include "platform/controls/Control.h"

namespace health {

// A field for one or more lines of text, separated by CR LF. It also carries a tag, a hidden text that only the
// program changes.
class TextBox final : public Control {
public:
    enum class Lines {
        One,
        Several,
    };

    explicit TextBox(Lines lines = Lines::One)
        : m_lines(lines)
    {
    }

    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    Lines lines() const { return m_lines; }

    const Text& text() const { return m_text; }
    // Sets the text and raises Changed if it differs.
    void setText(TextView text);

    const Text& tag() const { return m_tag; }
    void setTag(TextView tag) { m_tag = tag; }

    // Sets the text of a stored record. Forms do not validate the text while isAsLoaded().
    void load(TextView text)
    {
        m_loaded = text;
        setText(text);
    }
    bool isAsLoaded() const { return m_text == m_loaded; }

    // Selects the whole text, so that typing replaces it; works also before the field is shown.
    void selectAll();
    bool isAllSelected() const { return m_allSelected; }

    // Width of the field in letters; 0: the front end chooses.
    int columns() const { return m_columns; }
    void setColumns(int letters) { m_columns = letters; }

    // Limit for typed texts, in letters: a record of many such texts still fits into one request.
    static constexpr int LongestText = 20'000;

    // The user has changed the text.
    void edit(TextView text);
    // The user presses a character key; returns the key after KeyPress, 0 if a handler consumed it.
    wchar_t pressKey(wchar_t key);
    // The user presses any key, before the field acts on it; a handler that consumes it sets it to 0. Key codes are
    // those of the capital letters; the shift state is the sum of 1 for Shift, 2 for Control and 4 for Alt.
    void pressKeyDown(int& keyCode, int shift) { raise(KeyDown, keyCode, shift); }
    // The field's window, for Desktop::sendEditMessage; null while the field is not shown.
    EditHandle window() const { return m_window; }
    void setWindow(EditHandle window) { m_window = window; }
    // The user types characters at the end of the text.
    void type(TextView keys);

    std::function<void()> Changed;
    std::function<void(wchar_t& key)> KeyPress;
    std::function<void(int& keyCode, int shift)> KeyDown;
    std::function<void()> MouseMove;

private:
    Lines m_lines;
    EditHandle m_window = nullptr;
    int m_columns = 0;
    bool m_allSelected = false;
    Text m_text;
    Text m_loaded;
    Text m_tag;
};

}
