#pragma once

#include "platform/controls/Button.h"

#include <vector>

namespace health {

// One entry of a menu.
class MenuItem final : public CommandControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    // The user chooses the entry; ignored while it is disabled or hidden.
    void choose()
    {
        if (isEnabled() && isVisible())
            raise(Click);
    }

    // What the entry acts on, shown beside the caption; empty if the caption suffices.
    const Text& detail() const { return m_detail; }
    void setDetail(TextView detail) { assign(m_detail, Text(detail), Change::Caption); }

    std::function<void()> Click;

private:
    Text m_detail;
};

// A list of entries, which belong to the form; a null entry is a separator.
class Menu final : public CaptionedControl {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

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
