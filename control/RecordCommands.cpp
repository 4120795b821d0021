#include "control/RecordCommands.h"

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

constexpr TextView NoActiveVisit = L"An active visit has not been selected.";

// Flags: ask whether a usable visit exists, without prompting.
constexpr int UsableVisitFlags = 12;
// Flags: let the host offer its visits when none is active.
constexpr int AskForVisitFlags = 44;

// Creates an editor, sets its public fields in the given order and shows it.
template<typename Editor, typename... Fields>
void show(modShared& shared, Fields&&... set)
{
    Editor editor(shared);
    (set(editor), ...);
    shared.desktop().showModal(editor);
}

}

// Null without a patient or for an unknown number.
const RecordType* RecordCommands::typeForPatient(int number) const
{
    return m_shared.patient().number() == 0 ? nullptr : recordType(number);
}

// Why the user may not change records of the type; empty when the user may.
Text RecordCommands::refusalOf(const RecordType& type) const
{
    if (type.editRule == EditRule::PermissionMessage)
        return m_shared.PermissionMessage();
    if (type.editRule == EditRule::Key && !m_shared.HasProvider() && !m_keys.has(type.editKey))
        return editRefusal(type.keyInRefusal);
    return {};
}

Text RecordCommands::whyNotEditable(int number) const
{
    const RecordType* const type = typeForPatient(number);
    return type ? refusalOf(*type) : whatToSelect(L"a record in the list");
}

// Without a patient or a known type it fails silently.
bool RecordCommands::checkPermitted(int number)
{
    const RecordType* const type = typeForPatient(number);
    if (!type)
        return false;
    const Text refusal = refusalOf(*type);
    if (!refusal.empty())
        m_shared.ErrorBox(refusal, InsufficientPermissions);
    return refusal.empty();
}

Text RecordCommands::whyNotAddable(int number) const
{
    const RecordType* const type = typeForPatient(number);
    if (!type)
        return whatToSelect(L"a form above the list");
    Text refusal = refusalOf(*type);
    if (refusal.empty() && type->needsVisit && !m_shared.encounter().prepare(UsableVisitFlags))
        refusal = NoActiveVisit;
    return refusal;
}

Text RecordCommands::whatToSelect(TextView missing) const
{
    return L"Select " + Text(m_shared.patient().number() == 0 ? L"a patient" : missing) + L'.';
}

void RecordCommands::open(int number, const Text& record, Text visit)
{
    if (!checkPermitted(number))
        return;
    if (visit.empty() && recordType(number)->needsVisit) {
        if (!m_shared.encounter().prepare(AskForVisitFlags)) {
            m_shared.WarningBox(NoActiveVisit, L"Active Visit Not Selected");
            return;
        }
        visit = wholeText(m_shared.encounter().visitNumber());
    }
    showEditor(recordType(number)->number, record, visit);
}

void RecordCommands::showEditor(RecordTypeNumber number, const Text& record, const Text& visit)
{
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
            m_shared, [&](frmElderView& viewer) { viewer.m_bElder = m_keys.has(EditKey::Elder); }, setVisit, setRecord);
    case RecordTypeNumber::Asthma:
        return show<frmAsthma>(
            m_shared,
            [&](frmAsthma& editor) {
                editor.m_bRegKey = m_keys.has(EditKey::Registry);
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

bool RecordCommands::remove(int number, const Text& record, const Text& label)
{
    if (!checkPermitted(number))
        return false;
    const RecordType* const type = recordType(number);
    if (!type) {
        // Intended: never reached, because an unknown type is not permitted.
        m_shared.WarningBox(label + L" may not be deleted.", L"Deletion not Allowed");
        return false;
    }
    const Text patient = m_shared.patientText(); // before the boxes, during which the host may change it
    Text title = L"Remove Record?";
    if (!m_shared.ConfirmBox(L"Are you sure you want to delete the selected " + label + L" record?", title))
        return false;
    title = L"Inactivate Patient?";
    if (type->number == RecordTypeNumber::Asthma
        && m_shared.ConfirmBox(L"Do you wish to inactivate this patient from the asthma registry?", title)) {
        const Text reply = m_shared.CallRpc(L"MEVVAST SETREG", patient + L"^I");
        if (m_shared.CheckRpcError(reply, L""))
            return false;
    }
    const Text reply = m_shared.CallRpc(Text(type->callPrefix) + L" DEL", record);
    return !m_shared.CheckRpcError(reply, L"") && m_shared.lastCall() == CallResult::Answered;
}

}
