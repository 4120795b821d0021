// Reads a patient's records from the server and fills the grid with them, one row each.
#pragma once

#include "control/RecordLines.h"
#include "control/RecordTypes.h"
#include "platform/controls/Grid.h"
#include "shared/modShared.h"

namespace health {

// What the list says when nothing is wrong and it has no rows.
inline constexpr TextView NoRecords = L"No personal health records.";

// Makes the server calls in their fixed order and appends rows. A failed call or a server error is shown and adds no
// rows. When the server is gone and the user chose not to retry, the remaining calls are skipped and all rows removed.
// Throws what the grid throws.
class GridLoader {
public:
    // All must outlive the loader. Grid and lines are empty.
    GridLoader(modShared& shared, Grid& grid, RecordLines& lines, const PatientFacts& patient)
        : m_shared(shared)
        , m_grid(grid)
        , m_lines(lines)
        , m_patient(patient)
    {
    }

    void load();

    // The list's hint after loading: which types could not be read, or that the patient has no records.
    Text remark() const;
    // The types whose records could not be read.
    std::vector<const RecordType*> unread() const { return m_serverGone ? types() : m_unread; }

private:
    struct Row {
        TextView record;
        TextView visit;
        TextView locked;
        TextView date; // the piece that contains it
        TextView line; // the whole record
    };

    std::vector<const RecordType*> types() const;
    ExpectedCall callOf(const RecordType& type) const;
    bool isRead(const RecordType& type, TextView reply);
    void loadPatientRow(const RecordType& type, TextView reply);
    void addListRow(const RecordType& type, TextView line);
    void addRefusalRow(const RecordType& type, const LinePieces& pieces, TextView line);
    void addRow(const RecordType& type, const Row& row);

    modShared& m_shared;
    Grid& m_grid;
    RecordLines& m_lines;
    const PatientFacts& m_patient;
    std::vector<const RecordType*> m_unread; // the call failed or returned an error
    bool m_serverGone = false;
    // The row under construction; members, so that their storage is reused.
    Text m_text; // the summary
    Text m_lead; // the date before it
    Text m_key;
};

}
