#include "records/RecordList.h"

#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "text/Conversions.h"

namespace health {

namespace {
constexpr PieceNumber DatePiece = 3;
constexpr PieceNumber RefusalDatePiece = 9;
}

std::vector<ListedRecord> listedRecords(const kalmevRepHistCtrl& control)
{
    const Grid& grid = control.fgData;
    const RecordLines& lines = control.recordLines();
    if (!grid.isDrawing() || lines.count() != grid.rowCount())
        return {};
    std::vector<ListedRecord> records;
    records.reserve(static_cast<std::size_t>(grid.rowCount()));
    for (int row = 0; row < grid.rowCount(); ++row) {
        const RecordType* const type =
            recordType(static_cast<int>(roundToWhole(leadingNumber(grid.text(row, GridColumn::Type)))));
        if (!type)
            return {};
        records.push_back({ .type = type,
            .line = lines.line(row),
            .key = grid.rowData(row),
            .label = grid.text(row, GridColumn::Label),
            .summary = grid.text(row, GridColumn::Summary),
            .record = grid.text(row, GridColumn::Record),
            .visit = grid.text(row, GridColumn::Visit),
            .isLocked = grid.text(row, GridColumn::Locked) == L"1",
            .isOfCurrentVisit = grid.cellForeColour(row, GridColumn::Summary) == Blue });
    }
    return records;
}

TextView recordDate(const ListedRecord& record)
{
    if (record.type->isOnePerPatient())
        return {};
    const bool refusal = record.type->number == RecordTypeNumber::Refusal;
    return displayPart(pieceView(record.line, L"^", refusal ? RefusalDatePiece : DatePiece));
}

}
