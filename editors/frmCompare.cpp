#include "editors/frmCompare.h"

#include <algorithm>

namespace health {

frmCompare::frmCompare(FormHeading heading, const std::vector<EntryText>& before, const std::vector<EntryText>& theirs,
    const std::vector<EntryText>& yours)
    : Form(L"frmCompare", L"Compare Entries")
    , m_heading(std::move(heading))
{
    static constexpr TextView headings[] = { L"Field", L"Before", L"Now stored", L"This form" };
    fg.setColumnCount(static_cast<int>(std::size(headings)));
    for (int column = 0; column < fg.columnCount(); ++column)
        fg.setColumnHeading(column, headings[column]);
    fg.setWordWrap(true);
    for (std::size_t i = 0; i < std::min({ before.size(), theirs.size(), yours.size() }); ++i) {
        if (before[i] == theirs[i] && before[i] == yours[i])
            continue;
        const int row = fg.rowCount();
        fg.setRowCount(row + 1);
        fg.setText(row, 0, yours[i].caption);
        int column = 1;
        for (const EntryText* const entry : { &before[i], &theirs[i], &yours[i] })
            fg.setText(row, column++, entry->text.empty() ? TextView(L"(empty)") : TextView(entry->text));
    }
    if (fg.rowCount() == 0)
        fg.setHint(L"The record is as this form has read it, and nothing has been entered.");
    fg.sizeColumns();
    cmdClose.setCaption(L"&Close");
    cmdClose.Click = [this] { close(); };
    setCancelButton(cmdClose);
    setDefaultButton(&cmdClose);
}

Arrangement frmCompare::arrangement() { return column({ fg, buttons({ cmdClose }) }); }

}
