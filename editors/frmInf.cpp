#include "editors/frmInf.h"

#include "text/Conversions.h"

namespace health {

frmInf::frmInf(modShared& shared)
    : EditorForm(shared, L"frmInf", L"Infant Feeding Choice", { L"Infant Feeding", L"VIF" })
{
    for (const TextView choice : Choices)
        lstINF.addItem(choice, lstINF.count() + 1);
    lstINF.ItemCheck = trapped(L"lstINF_ItemCheck", [this](int item) { lstINF_ItemCheck(item); });
    bindSave(cmdAdd, L"cmdAdd_Click", [this] { cmdAdd_Click(); });
}

Arrangement frmInf::arrangement() { return column({ wide(lstINF, 52), buttons({ cmdAdd, cmdCancel }) }); }

void frmInf::activate()
{
    if (m_sIEN.empty())
        setCaption(L"Add Infant Feeding Record");
    else
        loadRecord();
}

void frmInf::loadRecord()
{
    const Text reply = readRecord(L"MEVVIF GET", L"^" + m_sIEN);
    for (const TextView line : replyLines(reply)) {
        const LinePieces pieces(line);
        m_stored.read(pieces);
        setVisitDate(pieces[3]);
        const double code = leadingNumber(codePart(pieces[4]));
        for (int item = 0; code != 0 && item < lstINF.count(); ++item) {
            if (lstINF.itemData(item) != code)
                continue;
            lstINF.setListIndex(item);
            lstINF.setChecked(item, true);
            break;
        }
    }
}

void frmInf::lstINF_ItemCheck(int item)
{
    if (lstINF.isChecked(item))
        lstINF.uncheckOthers(item);
}

void frmInf::cmdAdd_Click()
{
    const int item = lstINF.firstChecked();
    if (item == -1) {
        askFor(lstINF, L"You must select the infant feeding option, before the record can be saved.", L"Type Missing");
        return;
    }
    save(L"MEVVIF SET", { m_sIEN, m_sVisit, wholeText(lstINF.itemData(item)) });
}

}
