#pragma once

#include "lookups/LookupTables.h"
#include "platform/Form.h"
#include "platform/Grid.h"
#include "platform/TextBox.h"
#include "shared/modShared.h"

namespace health {

// The search dialog with which editors pick a coded value from a server table. Made for one lookup; the caller reads
// m_sName and m_sRecId afterwards.
class frmLookup : public Form {
public:
    explicit frmLookup(modShared& shared);

    // Searches the table (0 to 24) for a text. A single match is returned at once when autoReturn is set, else the
    // dialog is shown. `screen` replaces the table's own, "*" keeps it. True: an entry was chosen; false: the user
    // cancelled, or the server refused the search.
    bool RunQuery(int refTable, TextView param, bool autoReturn, TextView screen);

    Text m_sName; // display text of the chosen entry
    Text m_sRecId; // its internal entry number

    void Form_Load() override;
    void Form_Activate() override;
    Arrangement arrangement() override;

    Label lblFirstName;
    TextBox txtName;
    Button cmdSearch;
    Label lblSelect;
    Grid fgResults;
    Button cmdSelect;
    Button cmdCancel;

protected:
    std::function<void()> trapped(TextView procedure, std::function<void()> work);
    // Searches the same text with another screen.
    void searchAgain(TextView screen);

private:
    enum class Outcome {
        Refused, // by the server; told to the user
        Answered, // the grid is filled, or nothing was searched
    };

    void chooseTable(int number);
    Outcome search(TextView text);
    void LoadGrid(TextView reply);
    Text parameter() const;
    bool takeSingleMatch();
    void cmdSearch_Click();
    void cmdSelect_Click();
    void fgResults_MouseMove();

    modShared& m_shared;
    int m_number = 0;
    const LookupTable* m_table = nullptr;
    std::vector<LookupColumn> m_columns;
    Text m_screen;
    Text m_searchText;
    bool m_cancelled = false;
    int m_tipRow = -1;
    int m_tipColumn = -1;
};

}
