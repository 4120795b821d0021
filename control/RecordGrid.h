#pragma once

#include "control/RecordLines.h"
#include "control/RecordTypes.h"
#include "platform/controls/Grid.h"
#include "shared/modShared.h"

#include <map>
#include <optional>

namespace health {

// A row of the list. Copies, because a reload may replace the grid's rows while a box or an editor is open.
struct RecordRow {
    int type = 0; // 0 for a row without a type
    Text record;
    Text visit;
    Text label;
    bool isLocked = false; // the record may not be edited
};

// The summaries of the rows by their keys.
using RecordTexts = std::map<Text, Text>;

// The grid as the list of a patient's records. Throws what the grid throws.
class RecordGrid {
public:
    // The grid must outlive the object.
    explicit RecordGrid(Grid& grid)
        : m_grid(grid)
    {
    }

    void setUp();
    // Reads the patient's records from the server; nothing is selected afterwards.
    void load(modShared& shared, const PatientFacts& patient);
    // Shows one row that says that no patient is selected, with nothing selected.
    void showNoPatient();

    // The selected row, if any.
    std::optional<RecordRow> selected() const;
    // The selected row's key, by which it is found again after a reload; empty when nothing is selected.
    Text selectedKey() const;
    // Selects the row with that key and scrolls to it; does nothing if there is no such row.
    void selectKey(TextView key);
    RecordTexts texts() const;
    // The records behind the rows; none while no patient is selected.
    const RecordLines& lines() const { return m_lines; }
    // Whose records were loaded last; 0 while no patient is selected.
    long patient() const { return m_patient; }
    // The types whose records the last load could not read.
    const std::vector<const RecordType*>& unread() const { return m_unread; }
    // Scrolls to the row of a record that was saved and highlights it briefly. An added record is the row that the
    // former texts lack.
    void showSaved(const SavedRecord& saved, const RecordTexts& before);
    // Marks the rows of the current visit.
    void highlightVisit(TextView visit);

private:
    Grid& m_grid;
    RecordLines m_lines;
    long m_patient = 0;
    std::vector<const RecordType*> m_unread;
};

}
