#include "records/CsvExport.h"

#include "api/Utf8.h"
#include "records/PartialDate.h"
#include "records/RecordKinds.h"
#include "text/Conversions.h"
#include "text/Letters.h"

#include <algorithm>
#include <map>
#include <span>

namespace health {

namespace {

enum class Content {
    Words,
    Number, // a number stays a number even if it begins with a sign
    Date,
};

struct Column {
    TextView heading;
    PieceNumber piece;
    Content content = Content::Words;
};

using enum Content;

constexpr Column Reproductive[] = { { L"Counts", 1 }, { L"LMP", 2, Date }, { L"Contraceptive Method", 3 },
    { L"Method Began", 4, Date }, { L"Est. Delivery", 6, Date }, { L"Determined by", 5 } };
constexpr Column InfantFeeding[] = { { L"Feeding Choice", 4 } };
constexpr Column BirthMeasurements[] = { { L"Weight (lb)", 1, Number }, { L"Weight (oz)", 2, Number },
    { L"Weight (kg)", 3, Number }, { L"Weight (g)", 4, Number }, { L"Birth Order", 10, Number },
    { L"Formula Started", 11 }, { L"Breast Stopped", 12 }, { L"Solids Started", 13 }, { L"Mother", 14 } };
constexpr Column FunctionalStatus[] = { { L"Status Change", 16 }, { L"Caregiver", 17 }, { L"Toileting", 4 },
    { L"Bathing", 5 }, { L"Dressing", 6 }, { L"Transfers", 7 }, { L"Feeding", 8 }, { L"Continence", 9 },
    { L"Finances", 10 }, { L"Cooking", 11 }, { L"Shopping", 12 }, { L"Chores", 13 }, { L"Meds", 14 },
    { L"Transportation", 15 } };
constexpr Column Asthma[] = { { L"Severity", 4 }, { L"FEV", 5, Number }, { L"FEF", 6, Number }, { L"PEF", 7, Number },
    { L"ETS", 8 }, { L"Particulates", 9 }, { L"Dust Mites", 10 }, { L"Mgt. Plan", 11 } };
constexpr Column TreatmentContract[] = { { L"Initiated", 5, Date }, { L"Type", 4 }, { L"Provider", 6 } };
constexpr Column Refusal[] = { { L"Type", 4 }, { L"Item", 6 }, { L"Comment", 12 } };

std::span<const Column> columnsOf(RecordTypeNumber type)
{
    switch (type) {
    case RecordTypeNumber::Reproductive:
        return Reproductive;
    case RecordTypeNumber::InfantFeeding:
        return InfantFeeding;
    case RecordTypeNumber::BirthMeasurements:
        return BirthMeasurements;
    case RecordTypeNumber::FunctionalStatus:
        return FunctionalStatus;
    case RecordTypeNumber::Asthma:
        return Asthma;
    case RecordTypeNumber::TreatmentContract:
        return TreatmentContract;
    case RecordTypeNumber::Refusal:
        return Refusal;
    case RecordTypeNumber::EmergencyRoom: // never listed
        break;
    }
    return {};
}

Text dateCell(TextView stored)
{
    const auto date = storedDate(stored);
    if (!date)
        return guardedCell(stored);
    return isoText(*date) + (date->time ? L" " + clockText(*date->time) : L"");
}

// A sign, digits with a point.
bool isPlainNumber(TextView text)
{
    const TextView digits = text.substr(text.starts_with(L'-') || text.starts_with(L'+') ? 1 : 0);
    return isNumeric(text) && !digits.empty() && digits.find_first_not_of(L"0123456789.") == TextView::npos;
}

Text cellOf(const Column& column, const LinePieces& pieces)
{
    const TextView stored = displayPart(pieces[column.piece]);
    if (column.content == Date)
        return dateCell(stored);
    return column.content == Number && isPlainNumber(stored) ? Text(stored) : guardedCell(stored);
}

// The rows of one file.
class Table {
public:
    void cell(TextView text)
    {
        m_bytes += m_rowBegun ? "," : "";
        m_rowBegun = true;
        const bool quoted = text.find_first_of(L",\"\r\n\t '") != TextView::npos;
        m_bytes += quoted ? '"' + narrow(replaced(text, L"\"", L"\"\"")) + '"' : narrow(text);
    }
    void endRow()
    {
        m_bytes += "\r\n";
        m_rowBegun = false;
    }
    std::string& bytes() { return m_bytes; }

private:
    std::string m_bytes = "\xEF\xBB\xBF";
    bool m_rowBegun = false;
};

void addHeadings(Table& table, const RecordType& type)
{
    table.cell(L"Patient");
    if (!type.isOnePerPatient())
        table.cell(L"Date");
    for (const Column& column : columnsOf(type.number))
        table.cell(column.heading);
    if (!type.isOnePerPatient())
        for (const TextView heading : { L"Record", L"Visit", L"Locked" })
            table.cell(heading);
    table.endRow();
}

void addRecord(Table& table, const ExportSubject& subject, const ListedRecord& record)
{
    const LinePieces pieces(record.line);
    table.cell(wholeText(subject.patient));
    if (!record.type->isOnePerPatient())
        table.cell(dateCell(recordDate(record)));
    for (const Column& column : columnsOf(record.type->number))
        table.cell(cellOf(column, pieces));
    if (!record.type->isOnePerPatient()) {
        table.cell(guardedCell(record.record));
        table.cell(guardedCell(record.visit));
        table.cell(record.isLocked ? L"Yes" : L"No");
    }
    table.endRow();
}

// Without what would begin another cell or row.
Text onOneLine(Text cell)
{
    std::replace_if(
        cell.begin(), cell.end(), [](wchar_t letter) { return letter >= 0 && letter < L' '; }, L' ');
    return cell;
}

Text oneCell(TextView text) { return guardedCell(onOneLine(Text(text))); }

}

// Spreadsheet programs ignore blanks and quotes before a formula. Some take the wide forms of the signs too.
Text guardedCell(TextView text)
{
    Text cell(text);
    std::replace(cell.begin(), cell.end(), L'\0', L' ');
    const TextView whole(cell);
    if (whole.starts_with(L'\t') || whole.starts_with(L'\r') || whole.starts_with(L'\n'))
        return L'\'' + cell;
    const std::size_t first = whole.find_first_not_of(L" \t\r\n\v\f\"'\u00A0\u2018\u2019\u201C\u201D\u3000\uFEFF");
    constexpr TextView signs = L"=+-@\uFF1D\uFF0B\uFF0D\uFF20";
    return first != TextView::npos && signs.find(whole[first]) != TextView::npos ? L'\'' + cell : cell;
}

std::vector<CsvFile> csvFiles(const ExportSubject& subject, const ExportedRecords& exported)
{
    std::vector<CsvFile> files;
    std::map<RecordTypeNumber, std::pair<std::size_t, Table>> tables;
    for (const ListedRecord* const record : exported.records) {
        const auto [place, isNew] = tables.try_emplace(record->type->number, files.size(), Table());
        if (isNew) {
            files.push_back({ kindName(record->type->number), {} });
            addHeadings(place->second.second, *record->type);
        }
        addRecord(place->second.second, subject, *record);
    }
    for (auto& [type, table] : tables)
        files[table.first].bytes = std::move(table.second.bytes());
    return files;
}

Text copiedRecord(const ListedRecord& record)
{
    Text line = oneCell(record.label) + L'\t' + onOneLine(dateCell(recordDate(record)));
    const LinePieces pieces(record.line);
    for (const Column& column : columnsOf(record.type->number)) {
        const TextView stored = displayPart(pieces[column.piece]);
        if (!stored.empty()) {
            const Text text = column.content == Date ? dateCell(stored) : Text(stored);
            line += L'\t' + oneCell(Text(column.heading) + L'=' + text);
        }
    }
    return line;
}

}
