// What all controls share: state that a front end mirrors, and one observer of its changes.
#pragma once

#include "api/Text.h"
#include "platform/controls/ControlVisitor.h"

#include <cstdint>
#include <functional>
#include <utility>

namespace health {

class Control;

// Colours are blue-green-red numbers (0xFF0000 is blue); with DefaultColour the front end chooses.
using Colour = std::uint32_t;
inline constexpr Colour DefaultColour = 0xFFFFFFFF;
inline constexpr Colour Blue = 0xFF0000;

// The Enter key in a KeyPress.
inline constexpr wchar_t EnterKey = L'\r';

// The window of an edit box; opaque to the logic.
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
    Flashed, // a row of a grid
    Entry, // the text of a field
    Value, // of an option, a check box, a list's checks, an up-down
    Options, // of a date
    ForeColour,
    BackColour,
    AllSelected, // the program has selected a field's whole text
    Note, // the line under a field
    Fault, // why a field's entry was refused
    Busy, // a button's action is running
    Hint, // the text below a grid's rows
    Refusal, // why a command cannot run
};

// Implemented by the front end; called after each change, on the user-interface thread.
class ControlObserver {
public:
    virtual void controlChanged(Control& control, Change change) = 0;

protected:
    ~ControlObserver() = default;
};

// System colours; the front end knows their values.
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

// Raises an event: calls the handler that the form has set, if any.
template<typename... Parameters, typename... Arguments>
void raise(const std::function<void(Parameters...)>& handler, Arguments&&... arguments)
{
    if (handler)
        handler(std::forward<Arguments>(arguments)...);
}

// Base of all controls. A control belongs to its form and is never copied; its observer must outlive it
// or unregister with setObserver(nullptr).
class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    // Calls the visitor's operation for this kind of control.
    virtual void accept(ControlVisitor& visitor) = 0;

    void setObserver(ControlObserver* observer) { m_observer = observer; }

    // The control's own state; canBeUsed() also asks the frames around it.
    bool isEnabled() const { return m_enabled; }
    virtual void setEnabled(bool enabled) { assign(m_enabled, enabled, Change::Enabled); }
    bool canBeUsed() const { return m_enabled && m_visible && (!m_frame || m_frame->canBeUsed()); }
    // The frame that holds the control, null for none; outlives it.
    const Control* frame() const { return m_frame; }
    void setFrame(const Control* frame) { m_frame = frame; }
    // The frame was enabled or disabled: adopts its state and resets grey text.
    virtual void followFrame(bool enabled)
    {
        setEnabled(enabled);
        if (enabled && m_foreColour == GreyText)
            setForeColour(DefaultColour);
    }

    bool isVisible() const { return m_visible; }
    void setVisible(bool visible) { assign(m_visible, visible, Change::Visible); }

    const Text& toolTip() const { return m_toolTip; }
    void setToolTip(TextView toolTip) { assign(m_toolTip, Text(toolTip), Change::ToolTip); }

    // A line under the field that explains how its value was changed; empty for none. The user's next entry removes it.
    const Text& note() const { return m_note; }
    void setNote(TextView note) { assign(m_note, Text(note), Change::Note); }

    // Why the field's last entry was refused; empty if it was not. The user's next entry removes it.
    const Text& fault() const { return m_fault; }
    void setFault(TextView fault) { assign(m_fault, Text(fault), Change::Fault); }

    // Called after each change of the control, those by the user included. The front end sets it.
    void setWatcher(std::function<void()> watcher) { m_watcher = std::move(watcher); }

    const Place& place() const { return m_place; }
    void setPlace(const Place& place) { assign(m_place, place, Change::Place); }

    Colour foreColour() const { return m_foreColour; }
    virtual void setForeColour(Colour colour) { assign(m_foreColour, colour, Change::ForeColour); }
    Colour backColour() const { return m_backColour; }
    void setBackColour(Colour colour) { assign(m_backColour, colour, Change::BackColour); }

    // The form gives the control the focus.
    virtual void entered() { }
    // The form leaves the control: the typed text becomes its value. False if the entry was refused or the form
    // replaced it.
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
        raise(m_watcher);
    }
    // The user has made an entry, which removes what the form said about the last one.
    void noteEntry()
    {
        setNote({});
        setFault({});
        raise(m_watcher);
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
    std::function<void()> m_watcher;
    bool m_enabled = true;
    bool m_visible = true;
    const Control* m_frame = nullptr;
    Colour m_foreColour = DefaultColour;
    Colour m_backColour = DefaultColour;
    Text m_toolTip;
    Text m_note;
    Text m_fault;
    Place m_place;
};

}
