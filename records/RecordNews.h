// What has changed in a list since the user last looked.
#pragma once

#include "records/RecordList.h"

#include <map>
#include <vector>

namespace health {

// Compares the loads of a patient's list by the rows' keys and texts. The first load of a patient is no news; each
// later one is compared with what the user has seen: a record is seen when the user leaves its row, and all are seen
// when the user leaves the patient. Keeps digests of the texts, in memory only.
class RecordNews {
public:
    enum class Mark { None, New, Changed };

    struct Gone {
        int before = 0; // the row in whose place the record stood; the number of rows if it was the last
        Text name; // "Refusal 09/22/2026"
    };

    // The list shows these records of a patient. Those of the types in `unread` could not be read and stay as seen.
    void show(long patient, const std::vector<ListedRecord>& records, const std::vector<const RecordType*>& unread);

    Mark mark(int row) const;
    // In the order of the rows.
    std::vector<Gone> gone() const;

    // The user has looked at a row, or this session has saved its record.
    void see(int row);
    // This session has deleted the record with that key: it will not be missed.
    void expectRemoval(TextView key) { m_removed = key; }
    // Another user works here.
    void forget();

private:
    struct Seen {
        Text key;
        const RecordType* type = nullptr;
        Text date; // as the server sent it
        std::size_t digest = 0; // of the text

        explicit Seen(const ListedRecord& record);
        Text name() const;
    };
    struct Row {
        Seen seen; // if the row is marked as changed, what it was before
        std::size_t digest;
        Mark mark = Mark::None;
    };
    struct Missing {
        int before;
        Seen seen;
    };
    struct Reference {
        std::vector<Seen> records; // in the list's order
        std::vector<const RecordType*> unread; // never read
    };

    Reference reference() const;
    void leavePatient();
    void compare(const Reference& reference, const std::vector<ListedRecord>& records,
        const std::vector<const RecordType*>& unread);

    long m_patient = 0;
    std::vector<Row> m_rows;
    std::vector<Missing> m_missing;
    std::vector<Seen> m_kept; // of types that could not be read this time
    std::vector<const RecordType*> m_unread; // never read
    Text m_removed;
    std::map<long, Reference> m_left; // of the patients before
};

}
