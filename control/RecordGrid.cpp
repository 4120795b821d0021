#include "control/RecordGrid.h"

#include "control/GridColumns.h"
#include "control/GridLoader.h"
#include "text/Conversions.h"

namespace health {

namespace {

constexpr int LabelColumnWidth = 1600; // twips
constexpr int LabelColumnAlignment = 6;

}

void RecordGrid::setUp()
{
    m_grid.setColumnCount(GridColumn::Count);
    m_grid.setColumnWidth(GridColumn::Label, LabelColumnWidth);
    m_grid.setColumnAlignment(GridColumn::Label, LabelColumnAlignment);
    for (int column = GridColumn::Record; column < GridColumn::Count; ++column)
        m_grid.setColumnHidden(column, true);
    m_grid.setWordWrap(true);
}

void RecordGrid::load(modShared& shared, const PatientFacts& patient)
{
    m_grid.setHint(L"Loading ...");
    m_patient = patient.number;
    const DrawingPause pause(m_grid);
    m_grid.clear();
    m_grid.setRowCount(0);
    m_lines.clear();
    m_grid.setColumnHidden(GridColumn::Label, false);
    GridLoader loader(shared, m_grid, m_lines, patient);
    loader.load();
    m_unread = loader.unread();
    m_grid.select(-1);
    m_grid.setHint(loader.remark());
}

void RecordGrid::showNoPatient()
{
    m_patient = 0;
    m_grid.setHint({});
    m_lines.clear();
    m_grid.clear();
    m_grid.setRowCount(1);
    m_grid.setColumnHidden(GridColumn::Label, true);
    m_grid.setText(0, GridColumn::Summary, L"Patient Not Selected");
    m_grid.select(-1);
}

std::optional<RecordRow> RecordGrid::selected() const
{
    const int row = m_grid.row();
    if (row == -1)
        return std::nullopt;
    return RecordRow { .type = static_cast<int>(roundToWhole(leadingNumber(m_grid.text(row, GridColumn::Type)))),
        .record = Text(m_grid.text(row, GridColumn::Record)),
        .visit = Text(m_grid.text(row, GridColumn::Visit)),
        .label = Text(m_grid.text(row, GridColumn::Label)),
        .isLocked = m_grid.text(row, GridColumn::Locked) == L"1" };
}

Text RecordGrid::selectedKey() const { return m_grid.row() == -1 ? Text() : Text(m_grid.rowData(m_grid.row())); }

void RecordGrid::selectKey(TextView key)
{
    m_grid.select(-1);
    for (int row = 0; row < m_grid.rowCount(); ++row) {
        if (key.empty() || m_grid.rowData(row) != key)
            continue;
        m_grid.select(row, GridColumn::Summary);
        m_grid.showRow(row);
        return;
    }
}

RecordTexts RecordGrid::texts() const
{
    RecordTexts texts;
    for (int row = 0; row < m_grid.rowCount(); ++row)
        texts.emplace(m_grid.rowData(row), m_grid.text(row, GridColumn::Summary));
    return texts;
}

void RecordGrid::showSaved(const SavedRecord& saved, const RecordTexts& before)
{
    for (const RecordType& type : recordTypes()) {
        if (type.callPrefix != L"MEV" + saved.kind)
            continue;
        const Text key = Text(type.rowKey) + (type.isOnePerPatient() ? Text() : saved.record);
        const bool isKnown = type.isOnePerPatient() || !saved.record.empty();
        for (int row = 0; row < m_grid.rowCount(); ++row) {
            const TextView rowKey = m_grid.rowData(row);
            if (isKnown ? rowKey != key : !rowKey.starts_with(key) || before.contains(Text(rowKey)))
                continue;
            m_grid.showRow(row);
            m_grid.flashRow(row);
            return;
        }
    }
}

void RecordGrid::highlightVisit(TextView visit)
{
    for (int row = 0; row < m_grid.rowCount(); ++row) {
        const bool current = m_grid.text(row, GridColumn::Visit) == visit;
        m_grid.setCellForeColour(row, GridColumn::Summary, current ? Blue : DefaultColour);
    }
}

}
