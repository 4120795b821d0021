#pragma once

#include "platform/controls/Control.h"
#include "text/DateEntries.h"

namespace health {

// A field for a date. It accepts what clinical users type (see momentEntered). It shows a valid entry as "mm/dd/yyyy"
// or "mm/dd/yyyy hh:mm" and keeps any other text unchanged, for the form to validate.
class mevZvDate final : public Control {
public:
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

    const Text& value() const { return m_value; }
    // By the program; raises no event and replaces the text being typed.
    void setValue(TextView value);
    void clear() { setValue({}); }

    // The text in the field: the value, or the text being typed, which becomes the value when the user leaves the
    // field.
    const Text& shown() const { return m_typed ? *m_typed : m_value; }
    // Leaving the field would replace its value by what is being typed.
    bool isEdited(Moment now) const { return m_typed && understood(*m_typed, now) != m_value; }
    // The user types; `text` is the field's whole text.
    void type(TextView text);
    bool settle() override;
    // The user has typed since the field got the focus.
    bool wasTouched() const { return m_touched; }
    void entered() override { m_touched = false; }
    // The user presses Enter in the field; a handler that consumes the key sets it to 0.
    void pressKey(wchar_t& key) { raise(KeyPress, key); }
    // The front end's clock, for "T" and "N".
    void setClock(std::function<Moment()> clock) { m_clock = std::move(clock); }

    // The days that the form accepts, as of now; open if the form has set no rule. For the front end's calendar and the
    // form's explanation; the form itself judges entries in NewDateEntered.
    DateRange allowed(Moment now) const { return m_allowed ? m_allowed(now) : DateRange {}; }
    void setAllowed(std::function<DateRange(Moment now)> rule) { m_allowed = std::move(rule); }

    bool isEmpty() const { return m_value.empty(); }
    std::optional<Moment> moment() const { return parseDate(m_value); }

    // Requires a time of day; any other entry is refused and the old value kept.
    bool requiresTime() const { return m_requireTime; }
    void setRequireTime(bool required) { assign(m_requireTime, required, Change::Options); }
    // Drops the time of day from the user's entries.
    void setDateOnly(bool dateOnly) { m_dateOnly = dateOnly; }

    // The user has entered a text. `now` is the desktop's time, for "T" and "N". Raises NewDateEntered if the value
    // becomes a different, non-empty text, EntryRefused if the required time of day is missing. False if the entry was
    // refused or the form replaced it.
    bool enter(TextView text, Moment now);
    // The value that an entry becomes: the date as it is shown, or the trimmed text if it is not a date.
    Text understood(TextView text, Moment now) const;

    std::function<void(wchar_t& key)> KeyPress;
    std::function<void()> NewDateEntered;
    std::function<void()> EntryRefused;

private:
    Text m_value;
    std::optional<Text> m_typed; // not entered yet
    bool m_touched = false;
    std::function<Moment()> m_clock;
    std::function<DateRange(Moment)> m_allowed;
    bool m_requireTime = false;
    bool m_dateOnly = false;
};

}
