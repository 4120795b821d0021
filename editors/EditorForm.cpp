#include "editors/EditorForm.h"

#include "lookups/frmLookup.h"
#include "text/Conversions.h"
#include "text/FileManDates.h"
#include "text/Letters.h"

#include <array>
#include <utility>

namespace health {

EditorForm::EditorForm(modShared& shared, TextView name, TextView caption)
    : Form(name, caption)
    , m_shared(shared)
{
    cmdCancel.setCaption(L"&Cancel");
    cmdCancel.setToolTip(L"Cancel adding data");
    cmdCancel.Click = [this] { close(); };
    setCancelButton(cmdCancel);
}

void EditorForm::Form_Activate()
{
    if (std::exchange(m_activating, true))
        return;
    trap(L"Form_Activate", [this] {
        patient();
        readHeading();
        activate();
    });
    m_activated = true;
}

const Text& EditorForm::patient()
{
    if (m_patient.empty())
        m_patient = m_shared.patientText();
    return m_patient;
}

// --- The heading ---

void EditorForm::readHeading()
{
    const Patient& selected = m_shared.patient();
    m_heading.name = selected.displayName();
    if (m_heading.name.empty() || m_patient == L"0")
        return;
    for (const Text& detail : { L"No. " + m_patient, selected.sex(), selected.displayAge() }) {
        if (!detail.empty())
            m_heading.details.push_back(detail);
    }
}

void EditorForm::setVisitDate(TextView piece)
{
    const TextView date = displayPart(piece);
    m_visitDate = fmDateToDisplay(date);
    if (m_visitDate.empty())
        m_visitDate = replaced(date, L"@", L" ");
}

FormHeading EditorForm::heading()
{
    FormHeading heading = m_heading;
    if (heading.name.empty())
        return heading;
    const Encounter& encounter = m_shared.encounter();
    const Text visit = visitNumber();
    const bool isCurrent = !visit.empty() && visit == wholeText(encounter.visitNumber());
    if (visit.empty() || isCurrent) {
        heading.visit = encounter.displayText();
        heading.visitKind = isCurrent ? FormHeading::Visit::Current : FormHeading::Visit::Unknown;
    } else {
        heading.visit = m_visitDate;
        heading.visitKind = FormHeading::Visit::Other;
    }
    if (!heading.visit.empty())
        heading.visit.insert(0, L"Visit ");
    if (!m_recordDate.empty())
        heading.record = L"Record of " + m_recordDate;
    return heading;
}

Explanation EditorForm::explain(const Control& field)
{
    if (const auto* const date = dynamic_cast<const mevZvDate*>(&field))
        return explainDate(*date);
    return explainEntry(field);
}

Explanation EditorForm::explainDate(const mevZvDate& date)
{
    return m_dateRules.explain(date, m_shared.desktop().now());
}

// --- Reading and saving ---

void EditorForm::bindSave(Button& button, TextView procedure, std::function<void()> work)
{
    button.setCaption(L"&OK");
    button.setToolTip(L"Add data");
    button.Click = trapped(procedure, std::move(work));
    m_save = &button;
    setDefaultButton(m_save);
}

Text EditorForm::readRecord(TextView call, TextView parameter)
{
    const modShared::CallHint hint(m_shared,
        std::array {
            ExpectedCall { ExpectedCall::Form::Lines, Text(call), Text(parameter), ExpectedCall::Purpose::Editor } });
    return readAnnounced(call, parameter);
}

Text EditorForm::readAnnounced(TextView call, TextView parameter)
{
    const Text reply = m_shared.CallRpcList(call, parameter);
    return m_shared.CheckRpcError(reply, L"") ? Text() : reply;
}

bool EditorForm::send(TextView call, TextView parameter)
{
    return !m_shared.CheckRpcError(m_shared.CallRpc(call, parameter), L"");
}

void EditorForm::save(TextView call, const std::vector<Text>& pieces)
{
    if (send(call, joinPieces(pieces)))
        close();
}

void EditorForm::refuse(Control& field, TextView message, TextView title)
{
    m_shared.ErrorBox(message, title);
    field.setFault(message);
}

void EditorForm::refuseDate(mevZvDate& date, const DateRefusal& why, TextView replacement, TextView remark)
{
    refuse(date, why.message, why.title);
    date.setValue(replacement);
    date.setFault(Text(why.message) + L' ' + Text(remark));
}

void EditorForm::askFor(Control& missing, TextView text, TextView title)
{
    m_shared.WarningBox(text, title);
    setFocus(missing);
}

// --- Lookup fields ---

void EditorForm::bindLookup(
    TextBox& field, Button& button, TypedOver typedOver, Unnamed unnamed, std::function<void()> lookup)
{
    setLookupButton(field, button);
    button.setCaption(L"...");
    LookupField& own = m_lookupFields[&field];
    own = { typedOver, unnamed, {}, {}, std::move(lookup) };
    button.Click = [&field, &own] {
        own.searched = field.text();
        own.lookup();
    };
    field.GotFocus = [this, &field, &button, &own] {
        own.searched.clear();
        field.selectAll();
        setDefaultButton(&button);
    };
    field.LostFocus = [this, &field, &own] { leaveLookupField(field, own); };
}

void EditorForm::leaveLookupField(TextBox& field, const LookupField& lookupField)
{
    setDefaultButton(m_save);
    if (activeControl() == &cmdCancel)
        return;
    const bool typedOver = field.text() != lookupField.picked;
    const bool hasName = lookupField.typedOver == TypedOver::KeepsId && !lookupField.picked.empty();
    if (field.text().empty() || (typedOver && !hasName)) {
        field.setTag({});
    } else if (typedOver && !field.tag().empty()) {
        field.setText(lookupField.picked);
        field.setNote(
            L"The name has not changed. To choose another, press \"...\" after typing it, or clear this one first.");
        withholdPress(); // so that the user sees whose number is saved
        return;
    }
    const bool unresolved = !field.text().empty() && field.tag().empty();
    if (unresolved && field.text() != lookupField.searched)
        lookupField.lookup();
    if (!unresolved || !field.tag().empty())
        return;
    field.setText({});
    if (lookupField.unnamed == Unnamed::IsSaved)
        withholdPress();
}

bool EditorForm::lookUp(TextBox& field, int table)
{
    frmLookup lookup(m_shared);
    if (!lookup.RunQuery(table, field.text(), true, L"*"))
        return false;
    setPicked(field, lookup.m_sRecId.empty() ? Text() : lookup.m_sName, lookup.m_sRecId);
    return true;
}

void EditorForm::setPicked(TextBox& field, TextView name, TextView id)
{
    field.setNote({});
    field.setText(name);
    field.setTag(id);
    m_lookupFields[&field].picked = field.text();
}

// --- Texts ---

Text spacedName(TextView name) { return properCase(replaced(name, L",", L", ")); }

}
