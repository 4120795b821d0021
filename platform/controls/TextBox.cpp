#include "platform/controls/TextBox.h"

namespace health {

void TextBox::setText(TextView text)
{
    if (m_text == text)
        return;
    m_text = text;
    m_allSelected = false;
    notify(Change::Entry);
    raise(Changed);
}

void TextBox::selectAll()
{
    m_allSelected = true;
    notify(Change::AllSelected);
}

void TextBox::edit(TextView text)
{
    if (!canBeUsed())
        return;
    noteEntry();
    setText(text);
}

wchar_t TextBox::pressKey(wchar_t key)
{
    raise(KeyPress, key);
    return key;
}

void TextBox::type(TextView keys)
{
    for (const wchar_t key : keys) {
        if (const wchar_t kept = pressKey(key))
            edit(m_text + kept);
    }
}

}
