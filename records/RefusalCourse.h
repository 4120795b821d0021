#pragma once

#include "records/CourseDates.h"
#include "records/CourseTable.h"

namespace health {

// The refusals of each item over time.
class RefusalCourse {
public:
    struct Refusal {
        int record = -1; // index in the list
        RecordDate date;
        Text comment; // as it was entered
    };

    struct Item {
        Text name; // as the list shows it: "INFLUENZA (Immunization)"
        std::vector<Refusal> refusals; // with a readable date, the oldest first
        std::vector<int> undated; // indices in the list

        std::size_t count() const { return refusals.size() + undated.size(); }
        bool holds(int record) const;
        // "3 times, last on 11/20/2026"
        Text summary() const;
        // "3 times, last on 11/20/2026, 1 without a readable date"
        Text wholeSummary() const;
    };

    explicit RefusalCourse(std::span<const ListedRecord> records);

    // The item refused last comes first; items without any readable date come last.
    const std::vector<Item>& items() const { return m_items; }
    // "4 refusals of 2 items"
    Text extent() const;
    // "INFLUENZA (Immunization), refused on 11/20/2026: Wants to wait"
    static Text refusalText(const Item& item, const Refusal& refusal);
    CourseTable table() const;

private:
    std::vector<Item> m_items;
};

}
