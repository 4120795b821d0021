#pragma once

#include "records/CourseDates.h"
#include "records/CourseTable.h"

namespace health {

// The treatment contracts, and which of them still run. A contract runs for 365 days from its initiation, judged to the
// second as its form does.
class ContractCourse {
public:
    enum class State {
        Running,
        RanOut,
        NotBegun, // initiated in the future
        Unknown, // the initiation is not recorded or not a day
    };

    struct Contract {
        int record = -1; // index in the list
        Text type; // as the list shows it
        Text provider; // "Oakhurst, Katherine J"
        std::optional<RecordDate> initiated; // with a day; empty if that is not recorded
        Text initiatedText; // what is recorded: an imprecise date, or a text that is not a date
        Moment end; // with `initiated`; the contract still runs then
        State state = State::Unknown;
        Text words; // "running, 123 days left"
    };

    ContractCourse(std::span<const ListedRecord> records, Moment now);

    // The latest initiation first; those without a day last.
    const std::vector<Contract>& contracts() const { return m_contracts; }
    // "3 contracts, 1 running"
    Text extent() const;
    // "Pain · Whitcomb, Yolanda D"
    static Text name(const Contract& contract);
    // "Pain · Whitcomb, Yolanda D: initiated on 03/18/2026, ran out on 03/18/2027"
    static Text contractText(const Contract& contract);
    CourseTable table() const;

private:
    std::vector<Contract> m_contracts;
};

}
