#include "editors/frmElder.h"

namespace health {

frmElder::frmElder(modShared& shared)
    : EditorForm(shared, L"frmElder", L"Update Functional Status Record", { L"Functional Status", L"VELD" })
{
    fra[0].setCaption(L"Activities of Daily Living");
    fra[1].setCaption(L"Instrumental Activities of Daily Living");
    for (std::size_t i = 0; i < FunctionalItemCount; ++i) {
        lbl[i].setCaption(FunctionalItems[i].label);
        for (const TextView choice : FunctionalItems[i].choices)
            cbo[i].addItem(choice);
        cbo[i].setEmptiable(true);
        cbo[i].setToolTip(FunctionalItems[i].toolTip);
        lbl[i].setToolTip(FunctionalItems[i].toolTip);
        if (i < InstrumentalItems)
            fra[i < DailyLivingItems ? 0 : 1].hold({ &lbl[i], &cbo[i] });
    }
    bindSave(cmdAdd, L"cmdAdd_Click", [this] { cmdAdd_Click(); });
}

Arrangement frmElder::itemFields(std::size_t first, std::size_t last)
{
    std::vector<Arrangement> items;
    for (std::size_t i = first; i < last; ++i)
        items.push_back(field(lbl[i], { wide(cbo[i], i < InstrumentalItems ? 19 : 13), beside(20) }));
    return fields(std::move(items));
}

Arrangement frmElder::arrangement()
{
    return column({ row({ frame(fra[0], itemFields(0, DailyLivingItems)),
                        frame(fra[1], itemFields(DailyLivingItems, InstrumentalItems)) }),
        space(), ownAxis(itemFields(InstrumentalItems, FunctionalItemCount)), buttons({ cmdAdd, cmdCancel }) });
}

void frmElder::activate()
{
    if (m_sIEN.empty())
        setCaption(L"Enter Functional Status Record");
    else
        loadRecord();
}

void frmElder::loadRecord()
{
    const Text reply = readRecord(L"MEVVELD GET", L"^" + m_sIEN);
    for (const TextView line : recordLines(reply)) {
        const LinePieces pieces(line);
        m_stored.read(pieces);
        setVisitDate(pieces[3]);
        PieceNumber piece = FirstFunctionalPiece;
        for (ComboBox& list : cbo) {
            if (const TextView value = displayPart(pieces[piece++]); !value.empty())
                SelectComboItem(list, value);
        }
    }
}

void frmElder::cmdAdd_Click()
{
    std::vector<Text> record { m_sIEN, m_sVisit };
    for (const ComboBox& list : cbo)
        record.push_back(list.text());
    save(L"MEVVELD SET", record);
}

}
