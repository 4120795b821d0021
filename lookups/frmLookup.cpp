#include "lookups/frmLookup.h"

#include "text/Conversions.h"
#include "text/Letters.h"

#include <algorithm>

namespace health {

namespace {

constexpr int MostHits = 250;
constexpr int NameColumn = 2;
constexpr int CodeColumn = 1;
constexpr int NameWidth = 2000; // twips
constexpr int ShownWidth = 600;

// Removes characters that would break the "^"-separated parameter.
Text searchable(TextView text)
{
    Text result = TranslateChars(upperCase(text), L"^", L"");
    std::erase_if(result, [](wchar_t letter) { return letter < L' '; });
    const std::size_t start = std::min(result.find_first_not_of(L' '), result.size());
    result.erase(0, start);
    result.erase(result.find_last_not_of(L' ') + 1);
    return result;
}

}

frmLookup::frmLookup(modShared& shared, TextView name)
    : Form(name)
    , m_shared(shared)
{
    lblFirstName.setCaption(L"&Search Value");
    cmdSearch.setCaption(L"&Search");
    lblSelect.setCaption(L"Select one of the following &records");
    cmdSelect.setCaption(L"&OK");
    cmdCancel.setCaption(L"&Cancel");
    setCancelButton(cmdCancel);
    setDefaultButton(&cmdSearch);
    txtName.GotFocus = [this] {
        txtName.selectAll();
        setDefaultButton(&cmdSearch);
    };
    fgResults.GotFocus = [this] { setDefaultButton(&cmdSelect); };
    fgResults.DblClick = trapped(L"fgResults_DblClick", [this] { cmdSelect_Click(); });
    fgResults.MouseMove = trapped(L"fgResults_MouseMove", [this] { fgResults_MouseMove(); });
    cmdSearch.Click = trapped(L"cmdSearch_Click", [this] { cmdSearch_Click(); });
    cmdSelect.Click = trapped(L"cmdSelect_Click", [this] { cmdSelect_Click(); });
    cmdCancel.Click = trapped(L"cmdCancel_Click", [this] {
        m_cancelled = true;
        close();
    });
}

Arrangement frmLookup::arrangement()
{
    return column({ field(lblFirstName, { wide(txtName, 36), cmdSearch }), space(),
        row({ lblSelect, beside(lblSelect) }), wide(fgResults, 82), buttons({ cmdSelect, cmdCancel }) });
}

Explanation frmLookup::explain(const Control& control)
{
    Explanation explanation;
    const int found = fgResults.rowCount();
    if (&control == &lblSelect && found > 0 && fgResults.isVisible())
        explanation.beside = (found < MostHits ? L"" : L"the first ") + wholeText(found) + L" found";
    return explanation;
}

bool frmLookup::RunQuery(int refTable, TextView param, bool autoReturn, TextView screen)
{
    bool chosen = false;
    m_shared.trap(name(), L"RunQuery", [&] {
        load(); // before the grid is filled, because loading hides it
        m_heading = m_shared.patientHeading();
        m_cancelled = false;
        chooseTable(refTable);
        if (screen != L"*")
            m_screen = screen;
        if (search(param) == Outcome::Refused)
            return;
        m_singleMatch = autoReturn && takeSingleMatch();
        if (m_singleMatch) {
            chosen = true;
            return;
        }
        m_sName.clear();
        m_sRecId.clear();
        // Closing the window counts as Cancel.
        m_cancelled = true;
        m_shared.desktop().showModal(*this);
        chosen = !m_cancelled;
    });
    return chosen;
}

void frmLookup::chooseTable(int number)
{
    m_table = &lookupTable(number);
    m_columns = lookupColumns(*m_table);
    m_screen = m_table->screen;
    setCaption(L"Lookup " + Text(m_table->name));
}

Text frmLookup::parameter() const
{
    return Text(m_table->file) + L"^" + m_searchText + L"^^^" + wholeText(MostHits) + L"^" + Text(m_table->index) + L"^"
        + m_screen + L"^^" + Text(m_table->fields);
}

frmLookup::Outcome frmLookup::search(TextView text)
{
    m_searchText = searchable(text);
    txtName.setText(m_searchText);
    if (!m_searchText.empty())
        fgResults.setRowCount(0);
    // Of a value shown as "code - name", only the code is searched.
    m_searchText = m_searchText.substr(0, m_searchText.find(L" - "));
    if (m_searchText.empty() && !m_table->allowsEmptySearch)
        return Outcome::Answered;
    const Text reply = m_shared.CallRpcList(m_table->call, parameter());
    if (m_shared.CheckRpcError(reply, L"")) {
        cmdSelect.setEnabled(false);
        fgResults.setVisible(false);
        return Outcome::Refused;
    }
    cmdSelect.setEnabled(true);
    fgResults.setVisible(true);
    LoadGrid(reply);
    setFocus(fgResults);
    return Outcome::Answered;
}

void frmLookup::searchAgain(TextView screen)
{
    m_screen = screen;
    search(txtName.text());
}

void frmLookup::LoadGrid(TextView reply)
{
    fillGrid(reply);
    fgResults.sizeColumns();
    fgResults.setHint(fgResults.rowCount() == 0 ? L"No matches." : L"");
    fgResults.setToolTip({});
    m_tipRow = m_tipColumn = -1;
    if (fgResults.rowCount() > 0) {
        fgResults.select(0);
        fgResults.showRow(0);
    }
}

void frmLookup::fillGrid(TextView reply)
{
    const DrawingPause pause(fgResults);
    fgResults.setRowCount(0);
    fgResults.setColumnCount(static_cast<int>(m_columns.size()));
    for (int column = 0; column < fgResults.columnCount(); ++column) {
        const LookupColumn& layout = m_columns[static_cast<std::size_t>(column)];
        fgResults.setColumnHeading(column, layout.heading);
        fgResults.setColumnHidden(column, layout.hidden);
        fgResults.setColumnWidth(column, column == NameColumn ? NameWidth : layout.hidden ? 0 : ShownWidth);
    }
    for (const TextView line : replyLines(reply)) {
        const int row = fgResults.rowCount();
        fgResults.setRowCount(row + 1);
        for (int column = 0; column < fgResults.columnCount(); ++column) {
            const LookupColumn& layout = m_columns[static_cast<std::size_t>(column)];
            const TextView value = pieceView(line, L"^", layout.source);
            fgResults.setText(row, column, layout.properCase ? properCase(value) : Text(value));
        }
    }
}

bool frmLookup::takeSingleMatch()
{
    if (fgResults.rowCount() != 1)
        return false;
    m_sRecId = fgResults.text(0, 0);
    m_sName = fgResults.text(0, NameColumn);
    if (m_table->codeBeforeName)
        m_sName = Text(fgResults.text(0, CodeColumn)) + L" - " + m_sName;
    return true;
}

void frmLookup::cmdSearch_Click()
{
    if (searchable(txtName.text()).empty()) {
        m_shared.WarningBox(L"You must first enter some text to be searched.", L"Nothing to Search");
        setFocus(txtName);
        return;
    }
    search(txtName.text());
    if (!fgResults.isVisible())
        m_shared.InfoBox(L"Search found no matches.", L"Find Record");
    // The user will type another text.
    if (!fgResults.isVisible() || fgResults.rowCount() == 0)
        setFocus(txtName);
}

void frmLookup::cmdSelect_Click()
{
    const int row = fgResults.row();
    if (row == -1)
        return;
    m_sRecId = fgResults.text(row, 0);
    m_sName = fgResults.text(row, NameColumn);
    const Grid::Column& code = fgResults.column(CodeColumn);
    if (code.heading == L"Code" && !code.hidden)
        m_sName = Text(fgResults.text(row, CodeColumn)) + L" - " + m_sName;
    m_cancelled = false;
    close();
}

void frmLookup::fgResults_MouseMove()
{
    if (fgResults.mouseRow() == m_tipRow && fgResults.mouseColumn() == m_tipColumn)
        return;
    m_tipRow = fgResults.mouseRow();
    m_tipColumn = fgResults.mouseColumn();
    fgResults.setToolTip(m_tipRow == -1 || m_tipColumn == -1 ? TextView() : fgResults.text(m_tipRow, m_tipColumn));
}

void frmLookup::Form_Load() { fgResults.setVisible(false); }

void frmLookup::Form_Activate()
{
    m_shared.trap(name(), L"Form_Activate", [&] {
        if (fgResults.rowCount() < 2) {
            setFocus(txtName);
            txtName.selectAll();
        } else {
            setFocus(fgResults);
        }
    });
}

}
