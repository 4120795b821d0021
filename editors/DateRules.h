// The rules by which the forms accept dates, and what the forms say about a date while it is being typed.
#pragma once

#include "platform/Explanation.h"
#include "platform/controls/mevZvDate.h"

#include <functional>
#include <map>

namespace health {

// The title of most boxes that refuse a date.
inline constexpr TextView InvalidDate = L"Invalid Date";

// Why a form refuses a date: the box that it shows. An empty message means that it accepts the date.
struct DateRefusal {
    TextView message;
    TextView title;
};

// How a form judges the dates of a field.
struct DateRule {
    // Judges a date to the second. Accepts today and an unbroken range around it. Empty if all dates are accepted.
    std::function<DateRefusal(Moment entered, Moment now)> judge;
    DateRefusal notADate { L"Not a date", {} }; // for any other text
    TextView whenEmpty; // what happens to an empty field; may be empty
    // Whether the accepted range is shown below the field.
    enum class Range {
        IsShown,
        IsNotShown,
    } range = Range::IsShown;

    DateRefusal judged(const std::optional<Moment>& entered, Moment now) const;
    // The days that `judge` accepts at midnight.
    DateRange allowed(Moment now) const;
};

// The rules of a form's date fields.
class DateRules {
public:
    // Gives a field its rule and its allowed range.
    void add(mevZvDate& date, DateRule rule);
    // The refusal of the field's value; no message if it is accepted.
    DateRefusal judged(const mevZvDate& date, Moment now) const;
    // What leaving the field would do with its text, and the allowed range. Nothing for a field without a rule.
    Explanation explain(const mevZvDate& date, Moment now) const;

private:
    void explainEntry(Explanation& explanation, const mevZvDate& date, const DateRule& rule, Moment now) const;

    std::map<const mevZvDate*, DateRule> m_rules;
};

}
