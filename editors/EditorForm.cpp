#include "editors/EditorForm.h"

#include "editors/ExplanationTexts.h"
#include "editors/frmCompare.h"
#include "lookups/frmLookup.h"
#include "platform/FlagScope.h"
#include "text/Conversions.h"
#include "text/FileManDates.h"
#include "text/Letters.h"

#include <array>
#include <utility>

namespace health {

namespace {

constexpr std::size_t TimeStart = 11; // in "mm/dd/yyyy hh:mm"

// Keeps a button busy during the object's life.
class BusyScope {
public:
    explicit BusyScope(Button* button)
        : m_button(button)
    {
        if (m_button)
            m_button->setBusy(true);
    }
    ~BusyScope()
    {
        if (m_button)
            m_button->setBusy(false);
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

private:
    Button* m_button;
};

}

EditorForm::EditorForm(modShared& shared, TextView name, TextView caption, RecordKind kind)
    : Form(name, caption)
    , m_shared(shared)
    , m_kind(kind)
{
    cmdCancel.setCaption(L"&Cancel");
    cmdCancel.setToolTip(L"Cancel adding data");
    cmdCancel.Click = [this] { cancel(); };
    setCancelButton(cmdCancel);
    m_shared.addForm(*this);
}

EditorForm::~EditorForm() { m_shared.removeForm(*this); }

void EditorForm::Form_Activate()
{
    if (std::exchange(m_activating, true))
        return;
    trap(L"Form_Activate", [this] {
        patient();
        m_heading = m_shared.patientHeading();
        readCurrentVisit();
        activate();
    });
    m_activated = true;
    m_original = EntrySnapshot(*this);
    m_originalTexts = entryTexts(*this);
    if (m_draft)
        trap(L"Form_Activate", [this] { restoreDraft(); });
}

const Text& EditorForm::patient()
{
    if (m_patient.empty())
        m_patient = m_shared.patientText();
    return m_patient;
}

// --- The heading ---

void EditorForm::readCurrentVisit()
{
    const Encounter& encounter = m_shared.encounter();
    m_isOfCurrentVisit = !visitNumber().empty() && visitNumber() == wholeText(encounter.visitNumber());
    if (m_isOfCurrentVisit)
        m_visitDate = pieceView(encounter.displayText(), L",", 1);
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
    if (isForeign())
        heading.warning = L"Another patient is selected now: nothing can be saved here."
            + (heading.name.empty() ? Text() : L" This form belongs to " + heading.name + L".");
    if (heading.name.empty())
        return heading;
    if (m_isOfCurrentVisit) {
        heading.visitKind = FormHeading::Visit::Current;
    } else if (!visitNumber().empty()) {
        heading.visit = m_visitDate.empty() ? Text() : L"Visit " + m_visitDate;
        heading.visitKind = FormHeading::Visit::Other;
    }
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
    if (isForeign()) {
        patientChanged();
        return false;
    }
    const BusyScope busy(m_save);
    const Text reply = m_shared.CallRpc(call, parameter);
    m_saveLost = m_shared.lastCall() != CallResult::Answered;
    if (!m_shared.CheckRpcError(reply, L""))
        return true;
    focusRefused(reply);
    return false;
}

// Moves the focus to the field that the server's refusal is about.
void EditorForm::focusRefused(TextView reply)
{
    const Text message(pieceView(reply, L"^", 2));
    if (Control* const field = fieldOf(message)) {
        setFocus(*field);
        field->setFault(message);
    }
}

void EditorForm::save(TextView call, const std::vector<Text>& pieces)
{
    if (send(call, joinPieces(pieces)))
        closeSaved();
}

void EditorForm::closeSaved()
{
    if (m_saveLost)
        keepEntries(L"Entry not saved: ");
    else
        m_shared.noteSaved(m_kind.isListed ? m_kind.event : TextView(), recordNumber(), savedText());
    close();
}

// "Asthma Status 11/21/2026 08:15"; the date is the visit's, if the record belongs to one.
Text EditorForm::savedText() const
{
    return m_visitDate.empty() ? Text(m_kind.name) : Text(m_kind.name) + L' ' + m_visitDate;
}

// --- Entries that were not saved ---

void EditorForm::cancel()
{
    if (m_activated && EntrySnapshot(*this) != m_original)
        keepEntries(L"Entry discarded: ");
    close();
}

void EditorForm::keepEntries(TextView offer)
{
    std::shared_ptr<EditorForm> form = another();
    if (!form || isForeign())
        return;
    Draft& draft = form->m_draft.emplace();
    draft.before = m_originalTexts;
    draft.fields = EntrySnapshot(*this);
    for (const auto& [field, lookupField] : m_lookupFields)
        draft.picked.push_back(lookupField.picked);
    draft.ownState = ownState();
    draft.mayBeStored = m_saveLost;
    m_shared.keepEntry(Text(offer) + caption(), [form] { form->m_shared.desktop().showModal(*form); });
}

void EditorForm::restoreDraft()
{
    const Draft draft = *std::exchange(m_draft, std::nullopt);
    {
        const FlagScope restoring(m_restoring);
        draft.fields.restoreValues(*this);
    }
    auto picked = draft.picked.begin();
    for (auto& [field, lookupField] : m_lookupFields)
        lookupField.picked = *picked++;
    entriesRestored(draft.ownState);
    draft.fields.restoreTyping(*this);
    // The server recognises a repeated save, but not one with other entries.
    m_saveLost = draft.mayBeStored;
    if (recordNumber().empty() && m_saveLost)
        m_change = L"The record may have been added already: check the list before you save again";
    if (recordNumber().empty() || draft.before == m_originalTexts)
        return noteTextsChanged();
    m_originalTexts = draft.before;
    m_change = L"The record has changed since this entry was made";
    noteTextsChanged();
}

// --- Changes of the patient and of the record ---

bool EditorForm::isForeign() const
{
    try {
        return !m_patient.empty() && m_shared.patientText() != m_patient;
    } catch (...) {
        return false; // the call will report that the host is gone
    }
}

void EditorForm::patientChanged()
{
    if (m_save)
        m_save->setEnabled(!isForeign());
    noteTextsChanged();
}

void EditorForm::recordsChanged(TextView kind)
{
    if (kind != m_kind.event || recordNumber().empty() || !m_activated || isForeign())
        return;
    m_change = L"Changed by another session at " + dateTimeText(m_shared.desktop().now()).substr(TimeStart);
    noteTextsChanged();
}

FormNotice EditorForm::notice()
{
    if (m_change.empty() || isForeign())
        return {};
    return { m_change, recordNumber().empty() ? Text() : Text(L"Compare") };
}

void EditorForm::followNotice()
{
    const auto theirs = another();
    if (!theirs || isForeign())
        return; // it would read the record of the host's patient
    theirs->load();
    theirs->Form_Activate();
    if (m_shared.lastCall() != CallResult::Answered)
        return; // the user has seen the error; an empty form would look like a record that was cleared
    frmCompare comparison(heading(), m_originalTexts, entryTexts(*theirs), entryTexts(*this));
    // The server has seen that the record was read again, so it will not refuse the save.
    const bool isReplaced = entryTexts(*theirs) != entryTexts(*this);
    m_change = isReplaced ? TextView(L"OK replaces what the other session has saved") : TextView();
    noteTextsChanged();
    m_shared.desktop().showModal(comparison);
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
    missing.setFault(text);
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
        noteTextsChanged();
    } else if (typedOver && !field.tag().empty()) {
        field.setText(lookupField.picked);
        field.setNote(
            L"The name has not changed. To choose another, press \"...\" after typing it, or clear this one first.");
        withholdPress(); // so that the user sees whose number is saved
        return;
    }
    clearUnchosen(field, lookupField);
}

// Looks up a text that has no id, and clears the field if it remains without.
void EditorForm::clearUnchosen(TextBox& field, const LookupField& lookupField)
{
    const Text typed = field.text();
    if (typed.empty() || !field.tag().empty())
        return;
    if (typed != lookupField.searched)
        lookupField.lookup();
    if (!field.tag().empty())
        return;
    field.setText({});
    noteRemoved(field, typed, NothingChosen);
    if (lookupField.unnamed == Unnamed::IsSaved)
        withholdPress();
}

bool EditorForm::lookUp(TextBox& field, int table)
{
    const Text typed = field.text();
    frmLookup lookup(m_shared);
    if (!lookup.RunQuery(table, typed, true, L"*"))
        return false;
    setPicked(field, lookup.m_sRecId.empty() ? Text() : lookup.m_sName, lookup.m_sRecId);
    noteSingleMatch(field, typed, lookup.tookSingleMatch());
    return true;
}

void EditorForm::noteSingleMatch(TextBox& field, TextView typed, bool isSingle)
{
    if (isSingle && !typed.empty() && !equalIgnoringCase(typed, field.text()))
        field.setNote(L"The only match for " + quoted(typed) + L".");
}

void EditorForm::setPicked(TextBox& field, TextView name, TextView id)
{
    field.setNote({});
    field.setFault({});
    field.setText(name);
    field.setTag(id);
    m_lookupFields[&field].picked = field.text();
    noteTextsChanged();
}

Text EditorForm::pickedName(const TextBox& field) const
{
    const auto found = m_lookupFields.find(&field);
    if (field.tag().empty() || found == m_lookupFields.end())
        return {};
    const LookupField& own = found->second;
    const bool isReplaced = own.typedOver == TypedOver::ClearsId && field.text() != own.picked;
    return field.text().empty() || isReplaced ? Text() : own.picked;
}

Explanation EditorForm::explainLookup(const TextBox& field) const
{
    const Text name = pickedName(field);
    if (field.text().empty())
        return {};
    if (name.empty())
        return besideField(L"not looked up yet");
    if (name != field.text())
        return besideField(L"still " + spacedName(name), Tone::Caution);
    return besideField(spacedName(name), Tone::Good);
}

void EditorForm::noteRemoved(Control& field, TextView removed, TextView why)
{
    if (!removed.empty())
        field.setNote(quoted(removed) + L" was removed: " + Text(why) + L".");
}

// --- Texts ---

Text spacedName(TextView name) { return properCase(replaced(name, L",", L", ")); }

}
