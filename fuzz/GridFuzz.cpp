// Grid replies: whatever the server says, the panel lists the replies' own records and nothing else.
// Input: sex, age, then the replies of the seven calls in their order.
#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "fuzz/FuzzInput.h"
#include "tests/support/ScriptedHost.h"
#include "text/Conversions.h"

namespace health::fuzz {
namespace {

// The replies, taken apart by rules of this file's own.
Text piece(TextView text, wchar_t delimiter, int n)
{
    std::size_t start = 0;
    while (--n > 0 && start != TextView::npos) {
        start = text.find(delimiter, start);
        start = start == TextView::npos ? start : start + 1;
    }
    return start == TextView::npos ? Text() : Text(text.substr(start, text.substr(start).find(delimiter)));
}

std::vector<Text> lines(Text reply)
{
    std::vector<Text> found;
    for (std::size_t end = reply.find(L"\r\n"); end != Text::npos; end = reply.find(L"\r\n")) {
        found.push_back(reply.substr(0, end));
        reply.erase(0, end + 2);
    }
    return found;
}

struct ListCall {
    RecordTypeNumber type;
    TextView call;
    bool youngOnly;
    int locked; // piece
    std::vector<int> shown; // pieces whose part before "|" the summary shows
};

const ListCall Lists[] = {
    { RecordTypeNumber::InfantFeeding, L"MEVVIF GET", true, 2, { 4 } },
    { RecordTypeNumber::FunctionalStatus, L"MEVVELD GET", false, 2,
        { 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17 } },
    { RecordTypeNumber::Asthma, L"MEVVAST GET", false, 2, { 4, 5, 6, 7, 8, 9, 10, 11 } },
    { RecordTypeNumber::TreatmentContract, L"MEVVTXC GET", false, 2, { 4, 5, 6 } },
    { RecordTypeNumber::Refusal, L"MEVREF GET", false, 10, { 4, 6, 12 } },
};

class Panel {
public:
    explicit Panel(Sections& input)
    {
        m_host.patient->patientNumber = 12;
        m_host.patient->patientSex = input.next();
        m_host.patient->patientAge = input.next();
        for (const TextView call : { L"MEVREP GET", L"MEVBMSR GET", L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET",
                 L"MEVVTXC GET", L"MEVREF GET" }) {
            m_replies[Text(call)] = input.next();
            m_host.session->reply(call, m_replies[Text(call)]);
        }
        m_control.UserControl_Initialize();
        m_control.UserControl_Show();
    }

    void check()
    {
        for (const Text& box : m_host.boxes())
            require(!box.starts_with(L"box [System Error]"), "no reply is a fault of the panel", box);
        m_row = 0;
        const bool female = m_host.patient->patientSex == L"F";
        const bool young = leadingNumber(m_host.patient->patientAge) < 7;
        checkSingle(RecordTypeNumber::Reproductive, L"MEVREP GET", female, { 1, 2, 3, 5, 6 });
        checkSingle(RecordTypeNumber::BirthMeasurements, L"MEVBMSR GET", young, { 1, 2, 3, 10, 11, 12, 13, 14 });
        for (const ListCall& list : Lists)
            checkList(list, young);
        require(m_row == grid().rowCount(), "each row belongs to a record");
    }

    // An event of any kind loads the same rows again.
    void checkReload()
    {
        const int rows = grid().rowCount();
        if (rows > 0)
            grid().choose(rows - 1);
        const Text key = rows == 0 ? Text() : Text(grid().rowData(rows - 1));
        m_host.session->push(L"REFRESH");
        check();
        require(grid().rowCount() == rows, "a reload lists the same");
        require(rows == 0 || grid().rowData(grid().row()) == key, "a reload keeps the selected record", key);
    }

private:
    Grid& grid() { return m_control.fgData; }
    TextView cell(int column) { return grid().text(m_row, column); }
    static bool isError(const Text& reply) { return leadingNumber(piece(reply, L'^', 1)) < -0.5; }

    void checkType(RecordTypeNumber type)
    {
        require(m_row < grid().rowCount(), "each record has its row");
        require(cell(GridColumn::Type) == wholeText(static_cast<int>(type)), "a row is of its type");
        require(cell(GridColumn::Label) == recordType(type).rowLabel, "a row has its type's label");
    }

    void checkShown(TextView record, const std::vector<int>& shown)
    {
        const Text summary = folded(cell(GridColumn::Summary));
        for (const int n : shown)
            require(summary.find(folded(piece(piece(record, L'^', n), L'|', 1))) != Text::npos,
                "a summary shows the record's values", summary);
    }

    void checkSingle(RecordTypeNumber type, TextView call, bool listed, const std::vector<int>& shown)
    {
        const Text& reply = m_replies[Text(call)];
        if (!listed || reply.empty() || isError(reply))
            return;
        checkType(type);
        require(cell(GridColumn::Record) == L"12" && cell(GridColumn::Locked).empty(), "the record is the patient's");
        // The first pieces of these two are shown whole, with "|" and all.
        if (type == RecordTypeNumber::Reproductive)
            require(folded(cell(GridColumn::Summary)).starts_with(folded(piece(reply, L'^', 1))), "counts lead", reply);
        checkShown(reply, shown);
        ++m_row;
    }

    void checkList(const ListCall& list, bool young)
    {
        const Text& reply = m_replies[Text(list.call)];
        if ((list.youngOnly && !young) || isError(reply))
            return;
        for (const Text& line : lines(reply)) {
            checkType(list.type);
            require(cell(GridColumn::Record) == piece(line, L'^', 1), "the record's id is the line's", line);
            require(cell(GridColumn::Locked) == piece(line, L'^', list.locked), "the lock is the line's", line);
            const bool refusal = list.type == RecordTypeNumber::Refusal;
            require(cell(GridColumn::Visit) == (refusal ? Text() : piece(piece(line, L'^', 3), L'|', 2)),
                "the visit is the line's", line);
            require(grid().rowData(m_row) == Text(recordType(list.type).rowKey) + piece(line, L'^', 1),
                "the key is made of the id", line);
            checkShown(line, list.shown);
            ++m_row;
        }
    }

    test::ScriptedHost m_host;
    modShared m_shared { m_host.desktop };
    kalmevRepHistCtrl m_control { m_shared, m_host };
    std::map<Text, Text> m_replies;
    int m_row = 0;
};

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    health::fuzz::Sections input(data, size);
    health::fuzz::Panel panel(input);
    panel.check();
    panel.checkReload();
    return 0;
}
