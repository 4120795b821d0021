#pragma once

#include "platform/controls/Control.h"

namespace health {

// A field for text of one line or more; lines are parted by CR LF. Beside the text it carries a tag of the program's
// own, which nothing but the program changes.
class TextBox : public Control {
public:
    enum class Lines {
        One,
        Several,
    };

    explicit TextBox(Lines lines = Lines::One)
        : m_lines(lines)
    {
    }

    Lines lines() const { return m_lines; }

    const Text& text() const { return m_text; }
    // Sets the text and raises Changed when it differs.
    void setText(TextView text);

    const Text& tag() const { return m_tag; }
    void setTag(TextView tag) { m_tag = tag; }

    // Sets the text of a stored record. What was loaded is not judged as long as it stands.
    void load(TextView text)
    {
        m_loaded = text;
        setText(text);
    }
    bool isAsLoaded() const { return m_text == m_loaded; }

    // Selects the whole text, so that what is typed next replaces it; also before the field is shown.
    void selectAll();
    bool isAllSelected() const { return m_allSelected; }

    // As many letters as the field is wide; 0: as the front end sees fit.
    int columns() const { return m_columns; }
    void setColumns(int letters) { m_columns = letters; }

    // No text is longer: a record of many such texts still fits into one request.
    static constexpr int LongestText = 20'000;

    // The user has changed the text.
    void edit(TextView text);
    // The user presses a key that stands for a character; gives what the program made of it, 0: swallowed.
    wchar_t pressKey(wchar_t key);
    // The user presses any key, before it does its work in the field; 0 afterwards: swallowed. Key codes are those of
    // the capital letters; the shift state is 1 for Shift, 2 for Control, 4 for Alt, added up.
    void pressKeyDown(int& keyCode, int shift) { raise(KeyDown, keyCode, shift); }
    // The field's window, for Desktop::sendEditMessage; null while it is not shown.
    EditHandle window() const { return m_window; }
    void setWindow(EditHandle window) { m_window = window; }
    // The user types: each character as a key at the end of the text.
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
