#include "editors/frmElderView.h"

#include "editors/frmElder.h"
#include "shared/Security.h"
#include "text/Letters.h"

namespace health {

frmElderView::frmElderView(modShared& shared)
    : EditorForm(shared, L"frmElderView", L"View Functional Status Record", { L"Functional Status", L"VELD" })
{
    setHeight(5600); // twips; all items fit without scrolling
    fg.setColumnCount(2);
    fg.setColumnWidth(0, 2000);
    bindSave(cmdEdit, L"cmdEdit_Click", [this] { cmdEdit_Click(); });
    cmdEdit.setCaption(L"&Edit");
    cmdCancel.setToolTip({});
}

Arrangement frmElderView::arrangement() { return column({ fg, buttons({ cmdEdit, cmdCancel }) }); }

void frmElderView::activate()
{
    const Text reply = readRecord(L"MEVVELD GET", L"^" + m_sIEN);
    const DrawingPause pause(fg);
    for (const TextView line : recordLines(reply)) {
        const LinePieces pieces(line);
        setVisitDate(pieces[3]);
        addRow(L"Visit Date", fmDateToDisplay(displayPart(pieces[3])));
        PieceNumber piece = FirstFunctionalPiece;
        for (const FunctionalItem& item : FunctionalItems)
            addRow(item.rowName, properCase(displayPart(pieces[piece++])));
    }
}

void frmElderView::addRow(TextView name, TextView value)
{
    const int row = fg.rowCount();
    fg.setRowCount(row + 1);
    fg.setText(row, 0, name);
    fg.setText(row, 1, value);
}

void frmElderView::cmdEdit_Click()
{
    if (!m_bElder && !m_shared.HasProvider()) {
        m_shared.ErrorBox(editRefusal(L"MEVZ ELDER CARE EDIT"), InsufficientPermissions);
        return;
    }
    frmElder editor(m_shared);
    editor.m_sVisit = m_sVisit;
    editor.m_sIEN = m_sIEN;
    m_shared.desktop().showModal(editor);
    close(); // the view is out of date after an edit
}

}
