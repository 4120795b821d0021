#include "editors/DateRules.h"

#include "text/DateWords.h"

namespace health {

using namespace std::chrono;

namespace {

void say(Explanation& explanation, TextView text, Tone tone)
{
    explanation.beside = text;
    explanation.tone = tone;
}

}

DateRefusal DateRule::judged(const std::optional<Moment>& entered, Moment now) const
{
    if (!entered)
        return notADate;
    return judge ? judge(*entered, now) : DateRefusal {};
}

DateRange DateRule::allowed(Moment now) const
{
    const auto accepts = [&](Moment day) { return !judge || judge(day, now).message.empty(); };
    // The accepted day that is farthest from today, between today and `limit`.
    const auto farthest = [&](Moment limit) -> std::optional<Moment> {
        if (accepts(limit))
            return std::nullopt;
        Moment accepted = dateOf(now);
        while (limit - accepted > days { 1 } || accepted - limit > days { 1 }) {
            const Moment middle = accepted + floor<days>((limit - accepted) / 2);
            (accepts(middle) ? accepted : limit) = middle;
        }
        return accepted;
    };
    return { farthest(momentOf(100, 1, 1)), farthest(momentOf(9999, 12, 31)) }; // the ends of what dates can be
}

void DateRules::add(mevZvDate& date, DateRule rule)
{
    const DateRule& kept = m_rules[&date] = std::move(rule);
    date.setAllowed([&kept](Moment now) { return kept.allowed(now); });
}

DateRefusal DateRules::judged(const mevZvDate& date, Moment now) const
{
    return m_rules.at(&date).judged(date.moment(), now);
}

Explanation DateRules::explain(const mevZvDate& date, Moment now) const
{
    Explanation explanation;
    const auto found = m_rules.find(&date);
    if (found == m_rules.end())
        return explanation;
    if (found->second.range == DateRule::Range::IsShown)
        explanation.below = rangeWords(date.allowed(now), now);
    explainEntry(explanation, date, found->second, now);
    return explanation;
}

// A value that is not being changed is not judged.
void DateRules::explainEntry(Explanation& explanation, const mevZvDate& date, const DateRule& rule, Moment now) const
{
    const bool isEdited = date.isEdited(now);
    const Text value = isEdited ? date.understood(date.shown(), now) : date.value();
    const auto moment = parseDate(value);
    if (value.empty())
        return say(explanation, rule.whenEmpty, Tone::Quiet);
    if (!moment && isEdited && isDateBegun(date.shown(), now))
        return say(explanation, L"Not yet a date", Tone::Caution);
    if (moment && isEdited && date.requiresTime() && !givesTime(date.shown(), *moment))
        return say(explanation, L"Enter the time too", Tone::Caution);
    const DateRefusal refusal = isEdited || !moment ? rule.judged(moment, now) : DateRefusal {};
    if (!refusal.message.empty())
        return say(explanation, refusal.message, isEdited ? Tone::Error : Tone::Caution);
    const bool isTimed = hasTime(*moment) || date.requiresTime();
    say(explanation, dateWords(*moment, now, isTimed ? TimePart::With : TimePart::Without), Tone::Quiet);
}

}
