#include "qt/RecordCopy.h"

#include "qt/ShownRecords.h"
#include "records/CsvExport.h"
#include "toolkit/QtText.h"

#include <QApplication>
#include <QClipboard>

namespace health {

namespace {

int copy(const ShownRecords& records, const std::vector<int>& rows)
{
    Text lines;
    for (const int row : rows)
        lines += (lines.empty() ? L"" : L"\n") + copiedRecord(records.all()[static_cast<std::size_t>(row)]);
    if (!rows.empty())
        QApplication::clipboard()->setText(toQString(lines));
    return static_cast<int>(rows.size());
}

}

int copySelectedRecord(const ShownRecords& records)
{
    const int row = records.selected();
    return row == -1 || !records.isShown(row) ? 0 : copy(records, { row });
}

int copyShownRecords(const ShownRecords& records) { return copy(records, records.rows()); }

}
