// kalmevRepHistCtrl: add, edit, delete.
#include "control/kalmevRepHistCtrl.h"

#include "control/GridLoader.h"
#include "editors/frmInf.h"
#include "editors/frmPediatric.h"
#include "editors/frmRepHist.h"
#include "platform/Conversions.h"

namespace health {

namespace {

// Lets the host offer its visits when none is active.
constexpr int AskForVisitFlags = 44;

// Set by the caller in the order given, shown, and gone.
template<typename Editor>
void show(modShared& shared, Editor& editor)
{
    shared.desktop().showModal(editor);
}

}

void kalmevRepHistCtrl::cmd_Click(int index)
{
    if (index == Add) {
        openEditor(cboType.itemData(cboType.listIndex()), L"", L"");
        return;
    }
    const int row = fgData.row();
    if (row == -1)
        return;
    const auto type = static_cast<int>(roundToWhole(leadingNumber(fgData.text(row, GridColumn::Type))));
    // Copies: the grid may be loaded again while a box or an editor is open.
    const Text record(fgData.text(row, GridColumn::Record));
    if (index == Edit)
        openEditor(type, record, Text(fgData.text(row, GridColumn::Visit)));
    else
        DelRec(type, record, Text(fgData.text(row, GridColumn::Label)));
}

void kalmevRepHistCtrl::openEditor(int number, const Text& record, Text visit)
{
    if (!isEditPermitted(number, Report::Shown))
        return;
    if (visit.empty() && recordType(number)->needsVisit) {
        if (!m_shared.encounter().prepare(AskForVisitFlags)) {
            m_shared.WarningBox(L"An active visit has not been selected.", L"Active Visit Not Selected");
            return;
        }
        visit = wholeText(m_shared.encounter().visitNumber());
    }
    showEditor(recordType(number)->number, record, visit);
}

// The grid follows by the server's event, not from here.
void kalmevRepHistCtrl::showEditor(RecordTypeNumber number, const Text& record, const Text& visit)
{
    switch (number) {
    case RecordTypeNumber::Reproductive: {
        frmRepHist editor(m_shared);
        show(m_shared, editor);
        break;
    }
    case RecordTypeNumber::InfantFeeding: {
        frmInf editor(m_shared);
        editor.m_sIEN = record;
        editor.m_sVisit = visit;
        show(m_shared, editor);
        break;
    }
    case RecordTypeNumber::BirthMeasurements: {
        frmPediatric editor(m_shared);
        show(m_shared, editor);
        break;
    }
    default:
        m_shared.InfoBox(L"Records of this type can be listed and deleted; their editor comes with a later version.",
            L"Personal Health");
    }
}

void kalmevRepHistCtrl::DelRec(int number, const Text& record, const Text& label)
{
    if (!isEditPermitted(number, Report::Shown))
        return;
    const RecordType* const type = recordType(number);
    if (!type) {
        // Not reached, since an unknown type is not permitted; intended.
        m_shared.WarningBox(label + L" may not be deleted.", L"Deletion not Allowed");
        return;
    }
    if (!m_shared.ConfirmBox(
            L"Are you sure you want to delete the selected " + label + L" record?", TextView(L"Remove Record?")))
        return;
    if (type->number == RecordTypeNumber::Asthma
        && m_shared.ConfirmBox(
            L"Do you wish to inactivate this patient from the asthma registry?", TextView(L"Inactivate Patient?"))) {
        const Text reply = m_shared.CallRpc(L"MEVVAST SETREG", wholeText(m_shared.patient().number()) + L"^I");
        if (m_shared.CheckRpcError(reply, L""))
            return;
    }
    m_shared.CheckRpcError(m_shared.CallRpc(Text(type->callPrefix) + L" DEL", record), L"");
}

}
