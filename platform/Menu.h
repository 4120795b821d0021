#pragma once

#include "platform/controls/Button.h"

#include <vector>

namespace health {

// One entry of a menu.
class MenuItem : public CaptionedControl {
public:
    // The user chooses the entry; nothing happens while it is disabled.
    void choose()
    {
        if (isEnabled() && isVisible())
            raise(Click);
    }

    // What the entry acts on, shown beside the caption; empty where the caption says it.
    const Text& detail() const { return m_detail; }
    void setDetail(TextView detail) { assign(m_detail, Text(detail), Change::Caption); }

    std::function<void()> Click;

private:
    Text m_detail;
};

// A menu as a list of entries that belong to the form; a null entry is a separating line.
class Menu : public CaptionedControl {
public:
    const std::vector<MenuItem*>& items() const { return m_items; }
    void setItems(std::vector<MenuItem*> items)
    {
        m_items = std::move(items);
        notify(Change::Items);
    }

private:
    std::vector<MenuItem*> m_items;
};

}
