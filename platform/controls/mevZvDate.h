#pragma once

#include "platform/controls/Control.h"
#include "text/Dates.h"

#include <optional>

namespace health {

// A field for a date. The user may type what clinical users type: a date, "T" for today, "N" for now, "T-3", "T+2W",
// "T-1M", "T+1Y", six or eight digits as 010206 or 01022006, a time after a blank or "@". What is understood is shown
// as "mm/dd/yyyy" or "mm/dd/yyyy hh:mm"; other text stays as it is, for the form to judge.
class mevZvDate : public Control {
public:
    const Text& value() const { return m_value; }
    // By the program; raises nothing, and replaces what is being typed.
    void setValue(TextView value);
    void clear() { setValue({}); }

    // What the field shows: the value, or what the user is typing, which becomes the value when the field is left.
    const Text& shown() const { return m_typed ? *m_typed : m_value; }
    // The user types: the field's whole text.
    void type(TextView text);
    bool settle() override;
    // The user has entered a date, or part of one, since the field got the focus.
    bool wasTouched() const { return m_touched; }
    void entered() override { m_touched = false; }
    // The user presses Enter in the field; 0 afterwards: swallowed.
    void pressKey(wchar_t& key) { raise(KeyPress, key); }
    // Gives the desktop's time, for what is typed; the front end's.
    void setClock(std::function<Moment()> clock) { m_clock = std::move(clock); }

    bool isEmpty() const { return m_value.empty(); }
    std::optional<Moment> moment() const { return parseDate(m_value); }

    // A date with its time of day is wanted: what the user enters else is refused, the value stays.
    bool requiresTime() const { return m_requireTime; }
    void setRequireTime(bool required) { assign(m_requireTime, required, Change::Options); }
    // A time is dropped from what the user enters.
    void setDateOnly(bool dateOnly) { m_dateOnly = dateOnly; }

    // The user has entered a text. `now` is the desktop's time, for "T" and "N". Raises NewDateEntered when the
    // text differs and is not empty, EntryRefused when an option refuses it. True: what was entered stands; false: it
    // was refused, or the form put another date in its place.
    bool enter(TextView text, Moment now);
    // What the control makes of a text: the date as it would be shown, else the text without blanks around it.
    Text understood(TextView text, Moment now) const;

    std::function<void(wchar_t& key)> KeyPress;
    std::function<void()> NewDateEntered;
    std::function<void()> EntryRefused;

private:
    Text m_value;
    std::optional<Text> m_typed; // not entered yet
    bool m_touched = false;
    std::function<Moment()> m_clock;
    bool m_requireTime = false;
    bool m_dateOnly = false;
};

// The moment that an entered text means, with all the short forms, to the minute; empty where it means none.
std::optional<Moment> momentEntered(TextView text, Moment now);

}
