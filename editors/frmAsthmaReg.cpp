#include "editors/frmAsthmaReg.h"

#include "lookups/LookupTables.h"
#include "text/Letters.h"

namespace health {

namespace {

DateRefusal judgeStorable(Moment entered, Moment)
{
    if (isStorable(entered))
        return {};
    return { L"Dates lie between the years 1800 and 2699.", InvalidDate };
}

}

Text registryNote(modShared& shared, TextView patient)
{
    Text note = shared.CallRpcList(L"MEVVAST GETNOTE", patient);
    if (shared.CheckRpcError(note, L""))
        return {};
    if (note.ends_with(LineBreak))
        note.resize(note.size() - LineBreak.size());
    // The server puts this mark before a note that would look like a server error.
    if (note.starts_with(L'\u2060'))
        note.erase(0, 1);
    return note;
}

frmAsthmaReg::frmAsthmaReg(modShared& shared)
    : EditorForm(shared, L"frmAsthmaReg", L"Update Asthma Registry", { L"Asthma Registry", L"VAST", false })
{
    static constexpr std::array<TextView, 6> captions { L"&Status", L"Last Asthma &Visit", L"Calculated Date Due",
        L"&Next Appt", L"Case &Manager", L"&Comments" };
    for (std::size_t i = 0; i < captions.size(); ++i)
        lbl[i].setCaption(captions[i]);
    lblStatus.setCaption(L"Not in Registry");
    cmdActivate.setCaption(ActivateCaption);
    cmdActivate.Click = trapped(L"cmdActivate_Click", [this] { cmdActivate_Click(); });
    for (std::size_t i = 0; i < dat.size(); ++i) {
        dat[i].setDateOnly(true); // the registry stores no times
        m_dateRules.add(
            dat[i], { judgeStorable, { L"Not a valid date format", InvalidDate }, {}, DateRule::Range::IsNotShown });
        dat[i].NewDateEntered = trapped(L"dat_NewDateEntered", [this, i] { dat_NewDateEntered(i); });
    }
    bindLookup(txtPrv, cmdPrv, TypedOver::ClearsId, Unnamed::IsSaved,
        trapped(L"cmdPrv_Click", [this] { lookUp(txtPrv, LookupTableNumber::Provider); }));
    txtComments.KeyDown = trapped(L"txtComments_KeyDown",
        [this](int& keyCode, int shift) { m_shared.FilterEditKeys(keyCode, shift, txtComments.window()); });
    bindSave(cmdAdd, L"cmdAdd_Click", [this] { cmdAdd_Click(); });
}

Arrangement frmAsthmaReg::arrangement()
{
    return column({ fields({ field(lbl[0], { strong(lblStatus), cmdActivate }), field(lbl[1], { dat[0] }),
                        field(lbl[2], { dat[1] }), field(lbl[3], { dat[2] }),
                        field(lbl[4], { wide(txtPrv, 28), cmdPrv }), field(lbl[5], { wide(txtComments, 46) }) }),
        buttons({ cmdAdd, cmdCancel }) });
}

void frmAsthmaReg::activate()
{
    m_shared.desktop().processPendingEvents();
    trap(L"LoadReg", [this] { LoadReg(); });
}

// Patient ^ status|code ^ last visit ^ date due ^ next appointment ^ manager.
void frmAsthmaReg::LoadReg()
{
    const modShared::CallHint hint(m_shared,
        std::array {
            ExpectedCall { ExpectedCall::Form::OneText, L"MEVVAST GETREG", patient(), ExpectedCall::Purpose::Editor },
            ExpectedCall { ExpectedCall::Form::Lines, L"MEVVAST GETNOTE", patient(), ExpectedCall::Purpose::Editor } });
    const Text reply = m_shared.CallRpc(L"MEVVAST GETREG", patient());
    if (!reply.empty() && !m_shared.CheckRpcError(reply, L"")) {
        const LinePieces pieces(reply);
        m_stored.read(pieces);
        setStatus(properCase(displayPart(pieces[2])));
        PieceNumber piece = 3;
        for (mevZvDate& field : dat) {
            if (const Text date = fmDateToDisplay(displayPart(pieces[piece++])); !date.empty())
                field.setValue(date);
        }
        // Intended: without the manager's id, which is sent only if the manager was looked up in this form.
        txtPrv.setText(spacedName(displayPart(pieces[6])));
    }
    m_storedNote = registryNote(m_shared, patient());
    txtComments.setText(replaced(m_storedNote, LineBreak, L" "));
}

// Intended: saving makes the patient active in the registry, regardless of the status.
void frmAsthmaReg::cmdAdd_Click()
{
    std::vector<Text> entry { patient(), L"A" };
    for (const mevZvDate& date : dat)
        entry.push_back(date.value());
    entry.push_back(txtPrv.tag());
    entry.push_back(txtComments.text());
    save(L"MEVVAST SETREG", entry);
}

void frmAsthmaReg::cmdActivate_Click()
{
    const bool activates = cmdActivate.caption() == ActivateCaption;
    const Text question =
        L"Are you sure you want to " + cmdActivate.caption().substr(1) + L" this patient in the asthma registry?";
    Text title = L"Please Confirm";
    if (!m_shared.ConfirmBox(question, title))
        return;
    if (!send(L"MEVVAST SETREG", patient() + (activates ? L"^A" : L"^I")))
        return;
    setStatus(activates ? L"Active" : L"Inactive");
}

// Everything that depends on the status, in one place.
void frmAsthmaReg::setStatus(TextView status)
{
    lblStatus.setCaption(status);
    cmdActivate.setCaption(status == L"Active" ? InactivateCaption : ActivateCaption);
}

void frmAsthmaReg::dat_NewDateEntered(std::size_t index)
{
    const DateRefusal why = judged(dat[index]);
    if (why.message.empty())
        return;
    refuse(dat[index], why.message, why.title);
    withholdPress(); // the date stays in the field, but the server would reject it
}

}
