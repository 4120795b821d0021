// Exports: whatever the server replies, FHIR is JSON without empty values, tables keep their shape and have no formula.
// Input: as for the grid: sex, age, then the replies to the seven calls in their order.
#include "control/kalmevRepHistCtrl.h"
#include "fuzz/FuzzInput.h"
#include "records/CsvExport.h"
#include "records/ListExport.h"
#include "tests/support/ScriptedHost.h"
#include "text/Conversions.h"

#include <numeric>

namespace health::fuzz {
namespace {

constexpr TextView Calls[] = { L"MEVREP GET", L"MEVBMSR GET", L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET",
    L"MEVVTXC GET", L"MEVREF GET" };

// Reads one value of JSON and requires that nothing in it is empty.
class JsonCheck {
public:
    explicit JsonCheck(std::string_view json)
        : m_rest(json)
    {
    }

    void value()
    {
        skipBlanks();
        const char begin = take();
        if (begin == '"')
            return string();
        if (begin == '{' || begin == '[')
            return members(begin);
        require(begin == 't' || begin == 'f' || begin == '-' || isDigit(begin), "a value begins here", rest());
        while (!m_rest.empty() && (std::isalnum(static_cast<unsigned char>(m_rest[0])) || m_rest[0] == '.'))
            take();
    }
    void end()
    {
        skipBlanks();
        require(m_rest.empty(), "nothing follows the value", rest());
    }

private:
    Text rest() const { return widen(m_rest.substr(0, 80)); }
    char take()
    {
        require(!m_rest.empty(), "the text is complete");
        const char byte = m_rest[0];
        m_rest.remove_prefix(1);
        return byte;
    }
    void skipBlanks()
    {
        while (m_rest.starts_with('\n'))
            take();
    }
    void string()
    {
        require(!m_rest.starts_with('"'), "no text is empty", rest());
        for (char byte = take(); byte != '"'; byte = take()) {
            require(static_cast<unsigned char>(byte) >= 0x20, "control characters are escaped", rest());
            if (byte == '\\')
                take();
        }
    }
    void members(char begin)
    {
        const char end = begin == '{' ? '}' : ']';
        do {
            skipBlanks();
            require(!m_rest.starts_with(end), "no object and no array is empty", rest());
            if (begin == '{') {
                require(take() == '"', "a member has a name", rest());
                string();
                require(take() == ':', "a value follows the name", rest());
            }
            value();
            skipBlanks();
        } while (m_rest.starts_with(',') && take());
        require(take() == end, "the bracket closes", rest());
    }

    std::string_view m_rest;
};

// The number of cells in each row of a table; requires that none is a formula.
std::vector<std::size_t> cellsInRows(const Text& table)
{
    std::vector<std::size_t> rows;
    Text cell;
    bool quoted = false;
    std::size_t cells = 1;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const wchar_t letter = table[i];
        if (letter == L'"') {
            quoted = !quoted;
        } else if (quoted || (letter != L',' && letter != L'\n')) {
            cell += letter;
        } else {
            const std::size_t first = cell.find_first_not_of(L" \t\r\n");
            const wchar_t begin = first == Text::npos ? L' ' : cell[first];
            const bool number = (begin == L'-' || begin == L'+') && isNumeric(cell);
            require(number || TextView(L"=+-@").find(begin) == TextView::npos, "no cell is a formula", cell);
            cell.clear();
            ++cells;
            if (letter == L'\n')
                rows.push_back(std::exchange(cells, 1u));
        }
    }
    return rows;
}

void check(kalmevRepHistCtrl& control)
{
    const auto records = listedRecords(control);
    std::vector<int> rows(records.size());
    std::iota(rows.begin(), rows.end(), 0);
    const ListExport exported(control, records, rows);
    for (const ExportedFile& file : exported.files(ExportFormat::Fhir, { .namesGuardian = true, .usesSnomed = true })) {
        JsonCheck json(file.bytes);
        json.value();
        json.end();
    }
    std::size_t written = 0;
    for (const ExportedFile& file : exported.files(ExportFormat::Csv)) {
        const auto cells = cellsInRows(widen(file.bytes).substr(1));
        for (const std::size_t count : cells)
            require(count == cells.front(), "all rows have as many cells as headings", widen(file.bytes));
        written += cells.size() - 1;
    }
    require(written == records.size(), "each record has its row");
    for (const ListedRecord& record : records)
        require(copiedRecord(record).find_first_of(L"\r\n") == Text::npos, "a copied record is one line");
}

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace health;
    fuzz::Sections input(data, size);
    test::ScriptedHost host;
    modShared shared(host.desktop);
    kalmevRepHistCtrl control(shared, host);
    host.patient->patientNumber = 12;
    host.patient->patientSex = input.next();
    host.patient->patientAge = input.next();
    for (const TextView call : fuzz::Calls)
        host.session->reply(call, input.next());
    control.UserControl_Initialize();
    control.UserControl_Show();
    fuzz::check(control);
    return 0;
}
