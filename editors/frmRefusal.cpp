#include "editors/frmRefusal.h"

#include "lookups/LookupTables.h"
#include "lookups/frmLookupEd2.h"
#include "lookups/frmLookupImm.h"
#include "text/Conversions.h"
#include "text/Letters.h"

namespace health {

namespace {

struct RefusalType {
    TextView text;
    int lookupTable;
};

constexpr RefusalType Types[] = { { L"EKG", 7 }, { L"Exam", 5 }, { L"Immunization", 0 }, { L"Lab", 2 },
    { L"Mammogram", 4 }, { L"Measurement", 3 }, { L"Medication/Drug", 6 }, { L"PAP Smear", 2 },
    { L"Radiology Exam", 4 }, { L"Skin Test", 1 } };

// True for the types that have only one item.
bool hasOnlyItem(TextView type) { return type == L"PAP Smear" || type == L"Mammogram" || type == L"EKG"; }

DateRefusal judgeRefusalDate(Moment entered, Moment now)
{
    if (dateOf(entered) > dateOf(now))
        return { L"The date cannot be in the future.", L"Invalid Historical Date" };
    return {};
}

constexpr TextView TypeNotSelected = L"Refusal Type not Selected";

}

frmRefusal::frmRefusal(modShared& shared)
    : EditorForm(shared, L"frmRefusal", L"Enter Refusal", { L"Refusal", L"REF" })
{
    for (const RefusalType& type : Types)
        lstRefusals.addItem(type.text, type.lookupTable);
    lblRefusals.setCaption(L"Refusal &Type");
    lblItem.setCaption(L"Refusal &Item");
    lblRefused.setCaption(L"&Date Refused");
    lblComment.setCaption(L"Comme&nt");
    bindLookup(txtItem, cmdItem, TypedOver::ClearsId, Unnamed::IsRefused,
        trapped(L"cmdItem_Click", [this] { cmdItem_Click(); }));
    lstRefusals.ItemCheck = trapped(L"lstRefusals_ItemCheck", [this](int row) { lstRefusals_ItemCheck(row); });
    txtItem.Changed = trapped(L"txtItem_Change", [this] { txtItem_Change(); });
    m_dateRules.add(
        datRefused, { judgeRefusalDate, { L"Invalid date format.", {} }, L"Today's date will be entered." });
    datRefused.NewDateEntered = trapped(L"datRefused_NewDateEntered", [this] { datRefused_NewDateEntered(); });
    txtRefComment.Validate =
        trapped(L"txtRefComment_Validate", [this](bool& cancel) { txtRefComment_Validate(cancel); });
    bindSave(cmdOK, L"cmdOK_Click", [this] { cmdOK_Click(); });
    cmdOK.setCaption(L"&Add");
    cmdOK.setToolTip({});
    cmdCancel.setToolTip({});
    datRefused.setDateOnly(true);
    datRefused.LostFocus = trapped(L"datRefused_LostFocus", [this] { datRefused_LostFocus(); });
}

Arrangement frmRefusal::arrangement()
{
    return column(
        { fields({ field(lblRefusals, { wide(lstRefusals, 44) }), field(lblItem, { wide(txtItem, 30), cmdItem }),
              field(lblRefused, { datRefused }), field(lblComment, { wide(txtRefComment, 44) }) }),
            buttons({ cmdOK, cmdCancel }) });
}

void frmRefusal::activate()
{
    if (m_sRefusalIen.empty()) {
        datRefused.setValue(dateText(m_shared.desktop().now()));
        return;
    }
    cmdOK.setCaption(L"&Save");
    setCaption(L"Edit Refusal");
    trap(L"LoadRef", [this] { LoadRef(); });
}

// --- Loading ---

void frmRefusal::LoadRef()
{
    const Text reply = readRecord(L"MEVREF GET", patient() + L"^" + m_sRefusalIen);
    for (const TextView line : recordLines(reply))
        showRecord(line);
}

// Record ^^^ type ^ item ^ item's name ^^^ date ^ locked ^^ comment.
void frmRefusal::showRecord(TextView line)
{
    const LinePieces pieces(line);
    m_stored.read(pieces);
    checkType(pieces[4]);
    const Text date = fmDateToDisplay(pieces[9]);
    datRefused.setValue(date.empty() ? pieces[9] : TextView(date));
    setRecordDate(datRefused.value());
    m_loading = true;
    setPicked(txtItem, pieces[6], pieces[5]);
    m_itemTable.reset();
    m_loading = false;
    txtRefComment.setText(pieces[12]);
}

// Intended: education topics, although the list has no such row.
Text frmRefusal::serverType(TextView type)
{
    const Text name = upperCase(type);
    return name == L"MEASUREMENT" || name == L"EDUCATION TOPIC" ? name + L"S" : name;
}

// Checks and selects the row of a stored type, so that the record can be saved without further input.
void frmRefusal::checkType(TextView type)
{
    const Text stored = upperCase(type);
    for (int row = 0; row < lstRefusals.count(); ++row) {
        const Text& text = lstRefusals.itemText(row);
        if (stored != upperCase(text) && stored != serverType(text))
            continue;
        m_loading = true;
        lstRefusals.setListIndex(row);
        lstRefusals.setChecked(row, true);
        m_loading = false;
        return;
    }
}

// The number of the table that was searched; empty if the item belongs to the checked row.
Text frmRefusal::ownState() const { return m_itemTable ? wholeText(*m_itemTable) : Text(); }

void frmRefusal::entriesRestored(TextView ownState)
{
    m_itemTable.reset();
    if (!ownState.empty())
        m_itemTable = static_cast<int>(leadingNumber(ownState));
    if (const int row = lstRefusals.firstChecked(); row != -1)
        lblItem.setCaption(L"&" + lstRefusals.itemText(row));
}

// --- The type ---

void frmRefusal::lstRefusals_ItemCheck(int row)
{
    if (!lstRefusals.isChecked(row))
        return;
    lstRefusals.uncheckOthers(row);
    const Text& type = lstRefusals.itemText(row);
    const Text former = txtItem.text();
    setPicked(txtItem, L"", L"");
    if (!m_loading)
        noteRemoved(txtItem, former, L"the refusal type has changed");
    m_itemTable.reset();
    lblItem.setCaption(L"&" + type);
    if (!m_loading && hasOnlyItem(type))
        takeOnlyItem(type);
}

void frmRefusal::takeOnlyItem(const Text& type)
{
    setPicked(txtItem, upperCase(type), L"");
    const Text reply = m_shared.CallRpc(L"MEVREF REFLIST", type);
    if (!m_shared.CheckRpcError(reply, L""))
        txtItem.setTag(reply);
    if (!txtItem.tag().empty())
        txtItem.setNote(L"The only item of this type.");
    noteTextsChanged();
    setFocus(txtItem);
}

bool frmRefusal::warnWithoutType()
{
    if (lstRefusals.listIndex() != -1)
        return false;
    static constexpr TextView message = L"You must first select a refusal type from the above list.";
    m_shared.WarningBox(message, L"Type Not Selected");
    lstRefusals.setFault(message);
    return true;
}

// --- The item ---

void frmRefusal::txtItem_Change()
{
    if (m_loading || m_clearing || !warnWithoutType())
        return;
    m_clearing = true; // no second warning when the text is cleared
    txtItem.setText(L"");
    m_clearing = false;
    setFocus(lstRefusals);
}

void frmRefusal::cmdItem_Click()
{
    if (warnWithoutType()) {
        setFocus(lstRefusals);
        return;
    }
    const int table = lstRefusals.itemData(lstRefusals.listIndex());
    m_itemTable = table;
    const Text typed = txtItem.text();
    const auto pickFrom = [&](auto& lookup) {
        const bool chosen = lookup.RunQuery(typed) && !lookup.m_sRecId.empty();
        setPicked(txtItem, chosen ? lookup.m_sName : Text(), chosen ? lookup.m_sRecId : Text());
        noteSingleMatch(txtItem, typed, lookup.tookSingleMatch());
    };
    if (table == LookupTableNumber::Immunization) {
        frmLookupImm lookup(m_shared);
        pickFrom(lookup);
    } else if (table == LookupTableNumber::EducationTopic) { // Intended: never reached, no row has this table
        frmLookupEd2 lookup(m_shared);
        pickFrom(lookup);
    } else if (!lookUp(txtItem, table)) {
        setPicked(txtItem, L"", L""); // Intended: cancelling clears the field, unlike elsewhere
    }
    if (txtItem.text().empty())
        noteRemoved(txtItem, typed, NothingChosen);
}

// --- Date and comment ---

void frmRefusal::datRefused_NewDateEntered()
{
    if (const DateRefusal why = judged(datRefused); !why.message.empty())
        refuseDate(datRefused, why, dateText(m_shared.desktop().now()), L"Today's date was entered instead.");
}

// The server does not accept a refusal without a date.
void frmRefusal::datRefused_LostFocus()
{
    if (!datRefused.isEmpty() || activeControl() == &cmdCancel)
        return;
    datRefused.setValue(dateText(m_shared.desktop().now()));
    datRefused.setNote(L"A refusal has a date: this is today's.");
    withholdPress();
}

// Without line breaks.
Text frmRefusal::savedComment() const { return replaced(txtRefComment.text(), LineBreak, L""); }

// Validates the comment as it is saved.
void frmRefusal::txtRefComment_Validate(bool& cancel)
{
    const Text comment = savedComment();
    cancel = cancel || comment.size() > LongestComment || comment.size() == 1;
    if (comment.size() > LongestComment)
        refuse(txtRefComment, L"Comment cannot be longer than 200 characters.", L"Comment Too Long");
    else if (comment.size() == 1)
        refuse(txtRefComment, L"Comment must be longer than 1 character.", L"Comment Too Short");
    if (cancel || comment == txtRefComment.text())
        return;
    txtRefComment.setText(comment);
    txtRefComment.setNote(L"The line breaks were removed.");
}

// --- Saving ---

bool frmRefusal::isComplete()
{
    const int row = lstRefusals.listIndex();
    if (row == -1) {
        askFor(lstRefusals, L"You must first select the refusal type that you wish to add for this patient.",
            TypeNotSelected);
        return false;
    }
    if (!lstRefusals.isChecked(row)) {
        askFor(lstRefusals,
            L"You must first click the checkbox for the refusal type that you wish to add for this patient.",
            TypeNotSelected);
        return false;
    }
    // An item from another type's table counts as missing, because its number is only valid in that table.
    if (txtItem.tag().empty() || m_itemTable.value_or(lstRefusals.itemData(row)) != lstRefusals.itemData(row)) {
        askFor(txtItem,
            L"You must first select the " + TranslateChars(lblItem.caption(), L"&", L"")
                + L" type that you wish to add for this patient.",
            L"Item Not Selected");
        return false;
    }
    return true;
}

void frmRefusal::cmdOK_Click()
{
    if (!isComplete())
        return;
    save(L"MEVREF SET",
        { m_sRefusalIen, serverType(lstRefusals.itemText(lstRefusals.listIndex())), txtItem.tag(), patient(),
            datRefused.value(), txtRefComment.text() });
}

}
