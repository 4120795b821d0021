#pragma once

#include "lookups/LookupTables.h"
#include "platform/Form.h"
#include "platform/controls/Grid.h"
#include "platform/controls/TextBox.h"
#include "shared/modShared.h"

namespace health {

// The search dialog with which editors pick a coded value from a server table. Use it for one lookup, then read m_sName
// and m_sRecId.
class frmLookup : public Form {
public:
    // `name` identifies the dialog in error reports.
    explicit frmLookup(modShared& shared, TextView name = L"frmLookup");

    // Searches the table (0 to 24) for a text. With autoReturn, a single match is returned without
    // showing the dialog. `screen` replaces the table's own screen; "*" keeps that. True: an entry was chosen; false:
    // the user cancelled, or the server returned an error.
    bool RunQuery(int refTable, TextView param, bool autoReturn, TextView screen);

    // The entry was the only match, returned without showing the dialog.
    bool tookSingleMatch() const { return m_singleMatch; }

    Text m_sName; // display text of the chosen entry
    Text m_sRecId; // its internal entry number

    void Form_Load() override;
    void Form_Activate() override;
    Arrangement arrangement() override;
    FormHeading heading() override { return m_heading; }
    Explanation explain(const Control& control) override;

    Label lblFirstName;
    TextBox txtName;
    Button cmdSearch;
    Label lblSelect;
    Grid fgResults;
    Button cmdSelect;
    Button cmdCancel;

protected:
    // An event handler that reports failures under the procedure's name.
    template<typename Work>
    auto trapped(TextView procedure, Work work)
    {
        return m_shared.trapped(name(), procedure, std::move(work));
    }
    // Repeats the search with another screen.
    void searchAgain(TextView screen);

private:
    enum class Outcome {
        Refused, // by the server; the user has seen the error
        Answered, // the grid is filled, or nothing was searched
    };

    void chooseTable(int number);
    Outcome search(TextView text);
    void LoadGrid(TextView reply);
    void fillGrid(TextView reply);
    Text parameter() const;
    bool takeSingleMatch();
    void cmdSearch_Click();
    void cmdSelect_Click();
    void fgResults_MouseMove();

    modShared& m_shared;
    const LookupTable* m_table = nullptr;
    std::vector<LookupColumn> m_columns;
    Text m_screen;
    Text m_searchText;
    FormHeading m_heading;
    bool m_cancelled = false;
    bool m_singleMatch = false;
    int m_tipRow = -1;
    int m_tipColumn = -1;
};

}
