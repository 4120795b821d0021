// Column layouts and lookup replies: each row is a line of the reply, and what is chosen is the row's own entry.
// Input: table, layout, search text, reply, second search text, second reply, row.
#include "fuzz/FuzzInput.h"
#include "lookups/LookupTables.h"
#include "lookups/frmLookupImm.h"
#include "tests/support/ScriptedHost.h"

#include <algorithm>

namespace health::fuzz {
namespace {

void layout(const Text& columns)
{
    const auto parsed = lookupColumns({ .name = L"Anything", .file = L"1", .columns = columns });
    const auto pieces = SplitPieces(columns.empty() ? L"ID:1:1^Code:1:4^Anything:0:3" : columns, L"^", 0);
    require(parsed.size() == pieces.size(), "each piece is a column", columns);
    for (std::size_t i = 0; i < parsed.size(); ++i) {
        const TextView heading = parsed[i].heading;
        require(pieces[i].starts_with(heading) && heading.find(L':') == TextView::npos, "a heading ends at a colon",
            columns);
        require(parsed[i].source >= 0, "a source is a piece or none", columns);
    }
}

class Lookup {
public:
    Lookup(Sections& input, int table)
        : m_table(table)
        , m_first(input.next())
        , m_firstReply(input.next())
        , m_second(input.next())
        , m_secondReply(input.next())
        , m_row(input.nextChoice(16))
    {
        m_shared.InitObjects(m_host, false);
        reply(m_firstReply);
        m_host.desktop.inForms.push_back([this](Form&) { inDialog(); });
    }

    void run()
    {
        const bool immunization = m_table == LookupTableNumber::Immunization;
        const bool chosen =
            immunization ? m_dialog.RunQuery(m_first) : m_dialog.frmLookup::RunQuery(m_table, m_first, true, L"*");
        for (const Text& box : m_host.boxes())
            require(!box.starts_with(L"box [System Error]"), "no reply is a fault of the dialog", box);
        for (const Text& call : m_host.calls())
            require(std::count(call.begin(), call.end(), L'^') == 8, "a search has nine pieces", call);
        require(!chosen || isCellOf(m_dialog.m_sRecId), "what is chosen comes from a line", m_dialog.m_sRecId);
        if (chosen && m_shownRow != -1) {
            require(m_dialog.m_sRecId == m_shownId, "the selected row's entry is chosen", m_dialog.m_sRecId);
            require(m_dialog.m_sName.ends_with(m_shownName), "with its name", m_dialog.m_sName);
        }
    }

private:
    void reply(const Text& text)
    {
        m_host.session->reply(lookupTable(m_table).call, text);
        m_current = text;
    }

    bool isCellOf(const Text& id) const { return id.empty() || m_current.find(id) != Text::npos; }

    void checkRows(bool searched)
    {
        const Grid& grid = m_dialog.fgResults;
        if (!searched)
            return;
        const auto lines = replyLines(m_current);
        require(grid.rowCount() == static_cast<int>(lines.size()), "each line is a row", m_current);
        for (int row = 0; row < grid.rowCount(); ++row)
            require(
                lines[static_cast<std::size_t>(row)].find(grid.text(row, 0)) != TextView::npos, "an id is the line's");
    }

    // What the user does in the dialog.
    void inDialog()
    {
        const bool refused = modShared::RpcErrorCode(m_current) != 0;
        require(!refused || m_host.calls().empty(), "a refused search shows no dialog", m_current);
        checkRows(!m_host.calls().empty());
        reply(m_secondReply);
        m_dialog.moveFocus(m_dialog.txtName);
        m_dialog.txtName.edit(m_second);
        const std::size_t calls = m_host.calls().size();
        if (m_table == LookupTableNumber::Immunization && m_row % 2 == 1)
            m_dialog.opt[1].click();
        else
            m_dialog.press(m_dialog.cmdSearch);
        const bool searched = m_host.calls().size() > calls;
        checkRows(searched && modShared::RpcErrorCode(m_current) == 0);
        if (!searched)
            reply(m_firstReply);
        Grid& grid = m_dialog.fgResults;
        if (!grid.canBeUsed())
            return;
        grid.choose(m_row);
        grid.moveMouse(m_row, 1);
        m_shownRow = grid.row();
        if (m_shownRow != -1) {
            m_shownId = grid.text(m_shownRow, 0);
            m_shownName = grid.text(m_shownRow, 2);
        }
        if (m_row % 3 == 1)
            grid.doubleClick(m_row);
        else
            m_dialog.press(m_row % 3 == 2 ? m_dialog.cmdCancel : m_dialog.cmdSelect);
    }

    test::ScriptedHost m_host;
    modShared m_shared { m_host.desktop };
    frmLookupImm m_dialog { m_shared };
    int m_table;
    Text m_first;
    Text m_firstReply;
    Text m_second;
    Text m_secondReply;
    int m_row;
    Text m_current; // reply
    int m_shownRow = -1;
    Text m_shownId;
    Text m_shownName;
};

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace health::fuzz;
    Sections input(data, size);
    const int table = input.nextChoice(25);
    layout(input.next());
    Lookup(input, table).run();
    return 0;
}
