// Grid replies: whatever the server replies, the panel lists the replied records and nothing else.
// Input: sex, age, then the replies to the seven calls in their order.
#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "fuzz/FuzzInput.h"
#include "tests/support/ScriptedHost.h"
#include "text/Conversions.h"

namespace health::fuzz {
namespace {

struct ListedType {
    RecordTypeNumber type;
    TextView call;
    int locked; // piece; 0: one record a patient
    int shown; // a piece whose part before "|" the summary shows
};

constexpr ListedType Types[] = { { RecordTypeNumber::Reproductive, L"MEVREP GET", 0, 3 },
    { RecordTypeNumber::BirthMeasurements, L"MEVBMSR GET", 0, 14 },
    { RecordTypeNumber::InfantFeeding, L"MEVVIF GET", 2, 4 },
    { RecordTypeNumber::FunctionalStatus, L"MEVVELD GET", 2, 17 }, { RecordTypeNumber::Asthma, L"MEVVAST GET", 2, 11 },
    { RecordTypeNumber::TreatmentContract, L"MEVVTXC GET", 2, 6 },
    { RecordTypeNumber::Refusal, L"MEVREF GET", 10, 12 } };

class Panel {
public:
    explicit Panel(Sections& input)
    {
        m_host.patient->patientNumber = 12;
        m_host.patient->patientSex = input.next();
        m_host.patient->patientAge = input.next();
        for (const ListedType& listed : Types)
            m_host.session->reply(listed.call, m_replies[listed.type] = input.next());
        m_control.UserControl_Initialize();
        m_control.UserControl_Show();
    }

    void check()
    {
        for (const Text& box : m_host.boxes())
            require(!box.starts_with(L"box [System Error]"), "no reply makes the panel fail", box);
        m_row = 0;
        for (const ListedType& listed : Types) {
            const Text& reply = m_replies[listed.type];
            if (modShared::RpcErrorCode(reply) != 0 || !isCalled(listed.type))
                continue;
            if (listed.locked != 0)
                forEachLine(reply, [&](TextView line) { checkRow(listed, line, pieceView(line, L"^", 1)); });
            else if (!reply.empty())
                checkRow(listed, reply, L"12");
        }
        require(m_row == grid().rowCount(), "each row belongs to a record");
    }

    // Every event reloads the same rows.
    void checkReload()
    {
        const int rows = grid().rowCount();
        if (rows > 0)
            grid().choose(rows - 1);
        const Text key = rows == 0 ? Text() : Text(grid().rowData(rows - 1));
        m_host.session->push(L"REFRESH");
        check();
        require(rows == 0 || grid().rowData(grid().row()) == key, "a reload keeps the selected record", key);
    }

private:
    Grid& grid() { return m_control.fgData; }

    bool isCalled(RecordTypeNumber type) const
    {
        if (type == RecordTypeNumber::Reproductive)
            return m_host.patient->patientSex == L"F";
        const bool young = leadingNumber(m_host.patient->patientAge) < 7;
        return young || (type != RecordTypeNumber::BirthMeasurements && type != RecordTypeNumber::InfantFeeding);
    }

    void checkRow(const ListedType& listed, TextView line, TextView record)
    {
        require(m_row < grid().rowCount(), "each record has its row", line);
        const auto cell = [&](int column) { return grid().text(m_row, column); };
        const auto piece = [&](int n) { return pieceView(line, L"^", static_cast<short>(n)); };
        require(cell(GridColumn::Type) == wholeText(static_cast<int>(listed.type)), "a row has its record's type");
        require(cell(GridColumn::Record) == record, "a row has its record's number", line);
        require(cell(GridColumn::Locked) == piece(listed.locked), "a row has its record's lock", line);
        require(folded(cell(GridColumn::Summary)).find(folded(pieceView(piece(listed.shown), L"|", 1))) != Text::npos,
            "a summary shows its record's values", line);
        ++m_row;
    }

    test::ScriptedHost m_host;
    modShared m_shared { m_host.desktop };
    kalmevRepHistCtrl m_control { m_shared, m_host };
    std::map<RecordTypeNumber, Text> m_replies;
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
