// What all controls share: state that a front end mirrors, and one observer that is told of changes.
#pragma once

#include "api/Text.h"

#include <cstdint>
#include <functional>
#include <utility>

namespace health {

class Control;

// Colours are blue-green-red numbers (0xFF0000 is blue); Default leaves the choice to the front end.
using Colour = std::uint32_t;
inline constexpr Colour DefaultColour = 0xFFFFFFFF;
inline constexpr Colour Blue = 0xFF0000;

// Enter as a KeyPress gives it.
inline constexpr wchar_t EnterKey = L'\r';

// The window of an edit box; the front end gives it its meaning, the logic only hands it on.
using EditHandle = void*;

// What has changed in a control.
enum class Change {
    Enabled,
    Visible,
    Caption,
    ToolTip,
    Place,
    Items,
    Selection,
    Contents, // rows and texts of a grid
    Colours, // of a grid's cells
    Layout, // columns of a grid
    ColumnsSized, // to their contents
    ScrolledTo,
    Entry, // the text of a field
    Value, // of an option, a check box, a list's checks, an up-down
    Options, // of a date
    ForeColour,
    BackColour,
    AllSelected, // the program has selected a field's whole text
    Note, // the line under a field
    Hint, // what a grid says beside its rows
};

// Implemented by the front end; told after a change, on the user-interface thread.
class ControlObserver {
public:
    virtual void controlChanged(Control& control, Change change) = 0;

protected:
    ~ControlObserver() = default;
};

// System colours that a program names without knowing their values.
inline constexpr Colour WindowBackground = 0x80000005;
inline constexpr Colour ButtonFace = 0x8000000F;
inline constexpr Colour ButtonText = 0x80000012;
inline constexpr Colour GreyText = 0x80000011;

// Place of a control on its form, in twips (1/1440 inch).
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    int right() const { return left + width; }
    int bottom() const { return top + height; }
    bool operator==(const Place&) const = default;
};

// Base of all controls. A control belongs to its form and is never copied; its observer must outlive it
// or take itself off with setObserver(nullptr).
class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    void setObserver(ControlObserver* observer) { m_observer = observer; }

    // The control's own state; it can be used only where all frames around it are enabled too.
    bool isEnabled() const { return m_enabled; }
    virtual void setEnabled(bool enabled) { assign(m_enabled, enabled, Change::Enabled); }
    bool canBeUsed() const { return m_enabled && m_visible && (!m_frame || m_frame->canBeUsed()); }
    // The frame that holds the control, null for none; outlives it.
    const Control* frame() const { return m_frame; }
    void setFrame(const Control* frame) { m_frame = frame; }

    bool isVisible() const { return m_visible; }
    void setVisible(bool visible) { assign(m_visible, visible, Change::Visible); }

    const Text& toolTip() const { return m_toolTip; }
    void setToolTip(TextView toolTip) { assign(m_toolTip, Text(toolTip), Change::ToolTip); }

    // A line under the field that explains what became of its value; empty for none. What the user enters next takes it
    // off.
    const Text& note() const { return m_note; }
    void setNote(TextView note) { assign(m_note, Text(note), Change::Note); }

    const Place& place() const { return m_place; }
    void setPlace(const Place& place) { assign(m_place, place, Change::Place); }

    Colour foreColour() const { return m_foreColour; }
    virtual void setForeColour(Colour colour) { assign(m_foreColour, colour, Change::ForeColour); }
    Colour backColour() const { return m_backColour; }
    void setBackColour(Colour colour) { assign(m_backColour, colour, Change::BackColour); }

    // The form gives the control the focus.
    virtual void entered() { }
    // The form leaves the control: what the user has typed becomes its value. False: the form put another value in its
    // place, or none.
    virtual bool settle() { return true; }

    // Focus events, raised by the form. Validate may keep the focus by setting `cancel`.
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
    std::function<void(bool& cancel)> Validate;

protected:
    ~Control() = default;

    void notify(Change change)
    {
        if (m_observer)
            m_observer->controlChanged(*this, change);
    }

    template<typename Value>
    void assign(Value& member, Value value, Change change)
    {
        if (member == value)
            return;
        member = std::move(value);
        notify(change);
    }

private:
    ControlObserver* m_observer = nullptr;
    bool m_enabled = true;
    bool m_visible = true;
    const Control* m_frame = nullptr;
    Colour m_foreColour = DefaultColour;
    Colour m_backColour = DefaultColour;
    Text m_toolTip;
    Text m_note;
    Place m_place;
};

// Raises an event: calls the handler that the form has set, if any.
template<typename... Parameters, typename... Arguments>
void raise(const std::function<void(Parameters...)>& handler, Arguments&&... arguments)
{
    if (handler)
        handler(std::forward<Arguments>(arguments)...);
}

}
