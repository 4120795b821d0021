#pragma once

#include "records/CourseDates.h"
#include "records/CourseTable.h"

namespace health {

// How an infant was fed, visit by visit.
class FeedingCourse {
public:
    struct Visit {
        int record = -1; // index in the list
        RecordDate date;
        std::size_t choice = 0; // index in choices()
        Text age; // at the visit, "5 months"; empty if the birth date or the visit's day is not known
        Text before; // another choice at the visit before; empty if the choice is the same or the order is not certain
    };

    // `birth`: the patient's birth date, if the host tells it.
    FeedingCourse(std::span<const ListedRecord> records, const std::optional<Moment>& birth);

    // The oldest first.
    const std::vector<Visit>& visits() const { return m_visits; }
    // The choices that occur: those of the form in its order, then other texts.
    const std::vector<Text>& choices() const { return m_choices; }
    // "5 visits, 2 changes"
    Text extent() const;
    // What the picture leaves out; empty if nothing.
    Text note() const;
    // "Mostly Formula on 05/10/2026 14:30, age 5 months; changed from Mostly Breastfeeding"
    Text visitText(const Visit& visit) const;
    CourseTable table() const;

private:
    void collectChoices(const std::vector<Text>& words);
    void addVisit(const DatedRecord& dated, const Text& word, const std::optional<Moment>& birth);

    std::vector<Visit> m_visits;
    std::vector<Text> m_choices;
    std::size_t m_undated = 0;
    std::size_t m_withoutChoice = 0;
};

// The age on a day, in completed units: days below two weeks, weeks below three months, months below two years, then
// years. Empty before birth.
Text ageText(Moment birth, Moment day);

}
