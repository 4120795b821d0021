#pragma once

#include "records/CourseTable.h"
#include "records/RecordDate.h"
#include "records/RecordList.h"

#include <span>

namespace health {

// What a reproductive history says about the time from the last menstrual period to the delivery.
class ReproductiveCourse {
public:
    struct Count {
        Text name; // "Living Children"
        Text number; // empty if not recorded
    };

    struct Event {
        enum class Kind {
            LastPeriod,
            SecondTrimester,
            ThirdTrimester,
            Today,
            Delivery,
        };

        Kind kind;
        Text name; // "LMP", "14 weeks"
        Moment day;
        Text text; // in full: "LMP: 07/24/2026"
    };

    // Of the record with this index.
    ReproductiveCourse(std::span<const ListedRecord> records, int record, Moment now);

    int record() const { return m_record; }
    const std::vector<Count>& counts() const { return m_counts; }
    // As the form decides: an estimated delivery or how it was determined is recorded.
    bool isPregnant() const { return m_isPregnant; }
    // On known days, the earliest first. Today is always among them. Trimesters only while a pregnancy is recorded
    // whose last menstrual period and estimated delivery agree.
    const std::vector<Event>& events() const { return m_events; }
    // What is known about the pregnancy, and what is missing: "Estimated delivery: 04/30/2027, in 22 weeks"
    const std::vector<Text>& statements() const { return m_statements; }
    CourseTable table() const;

private:
    void readCounts(TextView counts);
    std::optional<Moment> readDay(TextView name, TextView piece);
    void addLastPeriod(TextView piece);
    void addDelivery(TextView piece, TextView method);
    void compareDates();
    void addEvent(Event::Kind kind, TextView name, Moment day, TextView words = {});
    bool isUnderWay() const;

    int m_record;
    Moment m_now;
    bool m_isPregnant = false;
    std::optional<Moment> m_lastPeriod; // not in the future
    std::optional<Moment> m_delivery;
    Text m_lastPeriodText; // as sent
    Text m_deliveryText;
    Text m_method;
    Text m_age; // "17 weeks 2 days" today
    std::vector<Count> m_counts;
    std::vector<Event> m_events;
    std::vector<Text> m_statements;
};

}
