// kalmevRepHistCtrl: add, edit, delete.
#include "control/kalmevRepHistCtrl.h"

#include "control/FlagScope.h"
#include "control/GridLoader.h"
#include "editors/frmAsthma.h"
#include "editors/frmER.h"
#include "editors/frmElder.h"
#include "editors/frmElderView.h"
#include "editors/frmInf.h"
#include "editors/frmPediatric.h"
#include "editors/frmRefusal.h"
#include "editors/frmRepHist.h"
#include "editors/frmTxc.h"
#include "text/Conversions.h"

namespace health {

namespace {

// Lets the host offer its visits when none is active.
constexpr int AskForVisitFlags = 44;

// A new one each time; its public fields are set in the order given, it is shown, and gone.
template<typename Editor, typename... Fields>
void show(modShared& shared, Fields&&... set)
{
    Editor editor(shared);
    (set(editor), ...);
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
    const int type = typeOf(row);
    // Copies: the grid may be loaded again while a box or an editor is open.
    const Text record(fgData.text(row, GridColumn::Record));
    if (index == Edit) {
        openEditor(type, record, Text(fgData.text(row, GridColumn::Visit)));
        return;
    }
    {
        const FlagScope deleting(m_deleting);
        trap(L"DelRec", [&] { DelRec(type, record, Text(fgData.text(row, GridColumn::Label))); });
    }
    catchUp();
}

void kalmevRepHistCtrl::OpenRecord(int type, const Text& record, const Text& visit)
{
    trap(L"OpenRecord", [&] { openEditor(type, record, visit); });
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
    const auto hasKey = [this](EditKey key) { return m_editKeys[static_cast<std::size_t>(key)]; };
    const auto setRecord = [&](auto& editor) { editor.m_sIEN = record; };
    const auto setVisit = [&](auto& editor) { editor.m_sVisit = visit; };
    switch (number) {
    case RecordTypeNumber::Reproductive:
        return show<frmRepHist>(m_shared);
    case RecordTypeNumber::InfantFeeding:
        return show<frmInf>(m_shared, setRecord, setVisit);
    case RecordTypeNumber::BirthMeasurements:
        return show<frmPediatric>(m_shared);
    case RecordTypeNumber::FunctionalStatus:
        if (record.empty())
            return show<frmElder>(m_shared, setVisit, setRecord);
        return show<frmElderView>(
            m_shared, [&](frmElderView& viewer) { viewer.m_bElder = hasKey(EditKey::Elder); }, setVisit, setRecord);
    case RecordTypeNumber::Asthma:
        return show<frmAsthma>(
            m_shared,
            [&](frmAsthma& editor) {
                editor.m_bRegKey = hasKey(EditKey::Registry);
                editor.setHeight(editor.m_bRegKey ? frmAsthma::RegistryHeight : frmAsthma::PlainHeight);
            },
            setVisit, setRecord);
    case RecordTypeNumber::TreatmentContract:
        return show<frmTxc>(m_shared, setVisit, setRecord);
    case RecordTypeNumber::Refusal:
        return show<frmRefusal>(m_shared, [&](frmRefusal& editor) { editor.m_sRefusalIen = record; });
    case RecordTypeNumber::EmergencyRoom:
        return show<frmER>(m_shared, setVisit, setRecord);
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
    const Text patient = m_shared.patientText(); // the one that the questions are about
    if (!m_shared.ConfirmBox(
            L"Are you sure you want to delete the selected " + label + L" record?", TextView(L"Remove Record?")))
        return;
    if (type->number == RecordTypeNumber::Asthma
        && m_shared.ConfirmBox(
            L"Do you wish to inactivate this patient from the asthma registry?", TextView(L"Inactivate Patient?"))) {
        const Text reply = m_shared.CallRpc(L"MEVVAST SETREG", patient + L"^I");
        if (m_shared.CheckRpcError(reply, L""))
            return;
    }
    m_shared.CheckRpcError(m_shared.CallRpc(Text(type->callPrefix) + L" DEL", record), L"");
}

}
