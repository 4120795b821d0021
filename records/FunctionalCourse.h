#pragma once

#include "editors/FunctionalItems.h"
#include "records/CourseDates.h"
#include "records/CourseTable.h"

#include <array>

namespace health {

// The items of daily living over the last assessments of functional status, up to and including the selected one.
class FunctionalCourse {
public:
    static constexpr std::size_t MostAssessments = 5;
    static constexpr std::size_t Blocks = 2; // activities of daily living, instrumental ones
    static constexpr std::size_t BlockItems = 6;

    enum class Level {
        NotRecorded,
        Independent,
        NeedsHelp,
        TotallyDependent,
        Other, // an unknown text: neither counted nor compared
    };

    // Compared with the last assessment before it that has one of the three levels.
    enum class Change {
        None,
        NeedsMoreHelp,
        NeedsLessHelp,
    };

    struct Value {
        Level level = Level::NotRecorded;
        Text word; // as the list shows it
        Change change = Change::None;
        Text before; // with a change, the former level and its date: "Independent on 06/10/2026 09:15"
    };

    struct Assessment {
        int record = -1; // index in the list
        RecordDate date;
        std::array<Value, InstrumentalItems> values;
        Text statusChange; // as the list shows them; empty if not recorded
        Text caregiver;
    };

    // Of the items that have one of the three levels.
    struct Count {
        int independent = 0;
        int recorded = 0;
    };

    // `selected`: index in the list.
    FunctionalCourse(std::span<const ListedRecord> records, int selected);

    // The oldest first, at most MostAssessments. The last one is the selected record. Empty if that has no readable
    // date.
    const std::vector<Assessment>& assessments() const { return m_assessments; }

    // The item's name on the form: "Housework".
    static Text itemName(std::size_t item);
    static TextView blockName(std::size_t block);

    static Count count(const Assessment& assessment, std::size_t block);
    // "2 of 6"; empty if no item of the block is recorded.
    static Text countText(const Assessment& assessment, std::size_t block);

    // With the last `shown` of the assessments: "last 5 of 14 assessments", "assessments 3 to 7 of 14".
    Text extent(std::size_t shown) const;
    // What the picture leaves out; empty if nothing.
    Text note() const { return undatedNote(m_undated, L"assessment"); }

    // "Dressing on 08/22/2026 11:30: Needs Help, needs more help than before (Independent on 06/10/2026 09:15)"
    static Text valueText(const Assessment& assessment, std::size_t item);
    // "Activities of Daily Living on 08/22/2026 11:30: independent in 3 of 6 recorded items"
    static Text countSentence(const Assessment& assessment, std::size_t block);

    CourseTable table() const;

private:
    std::vector<Text> itemRow(std::size_t item) const;

    std::vector<Assessment> m_assessments;
    std::size_t m_total = 0; // of those with a date
    std::size_t m_position = 0; // of the last one in m_assessments among them, counted from 1
    std::size_t m_undated = 0;
};

}
