#include "editors/frmAsthma.h"

#include "editors/frmAsthmaReg.h"
#include "shared/Security.h"
#include "text/Conversions.h"
#include "text/Letters.h"

namespace health {

namespace {

struct LungValue {
    TextView caption;
    TextView toolTip;
    int lowest;
    int highest;
};

// The bounds are inclusive.
constexpr std::array<LungValue, 3> LungValues { {
    { L"&FEV 1", L"Forced Expiratory Volume (range 0 to 150)", 0, 150 },
    { L"F&EF 25-75", L"Forced Expiratory Flow Rate (range 0-150)", 0, 150 },
    { L"&PEF/Best PF", L"Peak Expiratory Flow (range 100 to 700)", 100, 700 },
} };

// Position in a reply line. The lung values follow, then the answers about the triggers.
constexpr PieceNumber SeverityPiece = 4;

// Position in the registry's reply.
constexpr PieceNumber DuePiece = 4;

enum RegistryRow {
    CaseManagerRow = 3,
    CommentsRow = 4,
    RegistryRows = 5,
};

}

frmAsthma::frmAsthma(modShared& shared)
    : EditorForm(shared, L"frmAsthma", L"Update Asthma Record", { L"Asthma Status", L"VAST" })
{
    setHeight(PlainHeight);
    setCaptions();
    for (const TextView severity :
        { L"Mild Intermittent", L"Mild Persistent", L"Moderate Persistent", L"Severe Persistent" })
        cboSeverity.addItem(severity, cboSeverity.count() + 1);
    cboSeverity.setEmptiable(true);
    for (ComboBox& answer : cbo) {
        answer.addItem(L"Yes");
        answer.addItem(L"No");
        answer.setEmptiable(true);
    }
    for (std::size_t i = 0; i < txt.size(); ++i) {
        txt[i].setColumns(5);
        fraLung.hold({ &lblLung[i], &txt[i] });
    }
    for (std::size_t i = 0; i < 3; ++i)
        fraTriggers.hold({ &lblTriggers[i], &cbo[i] });
    fraRegister.hold({ &lblRegister, &lblStatus, &cmdActivate, &cmdEditReg, &fg });
    fg.setColumnCount(2);
    fg.setColumnWidth(0, 2000);
    fg.setWordWrap(true);
    bindEvents();
}

void frmAsthma::setCaptions()
{
    lblSeverity.setCaption(L"&Severity");
    fraLung.setCaption(L"&Lung Function");
    for (std::size_t i = 0; i < txt.size(); ++i) {
        lblLung[i].setCaption(LungValues[i].caption);
        txt[i].setToolTip(LungValues[i].toolTip);
    }
    fraTriggers.setCaption(L"&Triggers");
    static constexpr std::array<TextView, 4> triggers { L"Env. &Tobacco Smoke", L"Particulate &Matter", L"&Dust Mite",
        L"Asthma &Management Plan" };
    for (std::size_t i = 0; i < triggers.size(); ++i)
        lblTriggers[i].setCaption(triggers[i]);
    fraRegister.setCaption(L"Asthma &Registry");
    lblRegister.setCaption(L"&Status");
    lblStatus.setCaption(L"Not in Registry");
    cmdActivate.setCaption(ActivateCaption);
    cmdEditReg.setCaption(L"&Edit");
    cmdEditReg.setVisible(false);
    cmdHS.setCaption(L"Visit &Summary");
}

void frmAsthma::bindEvents()
{
    for (std::size_t i = 0; i < txt.size(); ++i)
        txt[i].Validate = trapped(L"txt_Validate", [this, i](bool& cancel) { txt_Validate(i, cancel); });
    cmdActivate.Click = trapped(L"cmdActivate_Click", [this] { cmdActivate_Click(); });
    cmdEditReg.Click = trapped(L"cmdEditReg_Click", [this] { cmdEditReg_Click(); });
    cmdHS.Click = trapped(L"cmdHS_Click", [this] { m_shared.VisitDetail(m_sVisit); });
    bindSave(cmdAdd, L"cmdAdd_Click", [this] { cmdAdd_Click(); });
}

Arrangement frmAsthma::arrangement()
{
    constexpr int AnswerWidth = 6; // characters; a value has as many
    const auto entries = [](auto& labels, auto& controls, int room) {
        std::vector<Arrangement> parts;
        for (std::size_t i = 0; i < 3; ++i)
            parts.push_back(field(labels[i], { wide(controls[i], AnswerWidth), beside(room) }));
        return fields(std::move(parts));
    };
    std::vector<Arrangement> parts { fields({ field(lblSeverity, { wide(cboSeverity, 22) }) }), space(),
        row({ frame(fraLung, entries(lblLung, txt, 25)), frame(fraTriggers, entries(lblTriggers, cbo, 8)) }),
        fields({ field(lblTriggers[3], { wide(cbo[3], AnswerWidth) }) }) };
    if (height() >= RegistryHeight) {
        parts.push_back(line());
        parts.push_back(frame(
            fraRegister, column({ field(lblRegister, { strong(lblStatus), cmdActivate, cmdEditReg }), details(fg) })));
    }
    parts.push_back(buttons({ cmdHS, stretch(), cmdAdd, cmdCancel }));
    return column(std::move(parts));
}

std::unique_ptr<EditorForm> frmAsthma::another() const
{
    auto form = anotherOf(*this, &frmAsthma::m_sIEN, &frmAsthma::m_sVisit, &frmAsthma::m_bRegKey);
    form->setHeight(height());
    return form;
}

// --- The record ---

void frmAsthma::activate()
{
    m_shared.desktop().processPendingEvents();
    // The comment is fetched only if there is an entry; announcing a call that is not made costs nothing.
    std::vector<ExpectedCall> calls { { ExpectedCall::Form::OneText, L"MEVVAST GETREG", patient() },
        { ExpectedCall::Form::Lines, L"MEVVAST GETNOTE", patient() } };
    if (!m_sIEN.empty())
        calls.insert(
            calls.begin(), { ExpectedCall::Form::Lines, L"MEVVAST GET", L"^" + m_sIEN, ExpectedCall::Purpose::Editor });
    const modShared::CallHint hint(m_shared, calls);
    if (m_sIEN.empty())
        setCaption(L"Add Asthma Record");
    else
        trap(L"LoadAst", [this] { LoadAst(); });
    trap(L"LoadRegistry", [this] { showRegistry(); });
}

void frmAsthma::LoadAst()
{
    const Text reply = readAnnounced(L"MEVVAST GET", L"^" + m_sIEN);
    for (const TextView line : replyLines(reply))
        showRecord(line);
}

void frmAsthma::showRecord(TextView line)
{
    const LinePieces pieces(line);
    m_stored.read(pieces);
    setVisitDate(pieces[3]);
    PieceNumber piece = SeverityPiece;
    SelectComboItem(cboSeverity, displayPart(pieces[piece++]));
    for (TextBox& lungValue : txt) {
        if (const TextView value = pieces[piece++]; !value.empty())
            lungValue.load(value);
    }
    for (ComboBox& list : cbo) {
        if (const TextView answer = displayPart(pieces[piece++]); !answer.empty())
            SelectComboItem(list, answer);
    }
}

void frmAsthma::cmdAdd_Click()
{
    const int severity = cboSeverity.listIndex();
    std::vector<Text> record { m_sIEN, m_sVisit, severity == -1 ? Text() : wholeText(cboSeverity.itemData(severity)) };
    for (const TextBox& value : txt)
        record.push_back(value.text());
    for (const ComboBox& answer : cbo)
        record.push_back(answer.text());
    save(L"MEVVAST SET", record);
}

// Why the form refuses a lung value, empty if it accepts it. Loaded values are not judged.
Text frmAsthma::lungFault(std::size_t index) const
{
    const Text& entry = txt[index].text();
    if (entry.empty() || txt[index].isAsLoaded())
        return {};
    const auto value = numericValue(entry);
    if (!value)
        return L"Entry must be numeric.";
    if (entry.find(L'.') != Text::npos)
        return L"Entry must be a whole number.";
    const LungValue& range = LungValues[index];
    if (*value < range.lowest || *value > range.highest)
        return L"Entry must be between " + lungRange(index, L" and ") + L".";
    return {};
}

Text frmAsthma::lungRange(std::size_t index, TextView between)
{
    return wholeText(LungValues[index].lowest) + Text(between) + wholeText(LungValues[index].highest);
}

void frmAsthma::txt_Validate(std::size_t index, bool& cancel)
{
    const Text message = lungFault(index);
    if (message.empty())
        return;
    refuse(txt[index], message, L"Invalid Entry");
    cancel = true;
}

// --- The registry ---

void frmAsthma::showRegistry()
{
    fg.setRowCount(0);
    const Text reply = m_shared.CallRpc(L"MEVVAST GETREG", patient());
    m_shared.noteRegistryDue(patient(), {});
    if (!reply.empty() && !m_shared.CheckRpcError(reply, L""))
        showRegistryEntry(reply);
}

// Patient ^ status|code ^ last visit ^ date due ^ next appointment ^ manager.
void frmAsthma::showRegistryEntry(const Text& reply)
{
    const LinePieces pieces(reply);
    setRegistryStatus(codePart(pieces[2]) == L"A", properCase(displayPart(pieces[2])));
    if (m_registryActive)
        m_shared.noteRegistryDue(patient(), displayPart(pieces[DuePiece]));
    static constexpr std::array<TextView, RegistryRows> names { L"Last Asthma Visit", L"Calculated Date Due",
        L"Next Appointment", L"Case Manager", L"Comments" };
    fg.setRowCount(RegistryRows);
    for (int row = 0; row < RegistryRows; ++row) {
        const TextView value = displayPart(pieces[row + 3]);
        fg.setText(row, 0, names.begin()[row]);
        fg.setText(row, 1, row == CaseManagerRow ? spacedName(value) : Text(value));
    }
    fg.setText(CommentsRow, 1, registryNote(m_shared, patient()));
}

// Everything that depends on the status, in one place.
void frmAsthma::setRegistryStatus(bool active, TextView status)
{
    m_registryActive = active;
    lblStatus.setCaption(status);
    cmdActivate.setCaption(m_registryActive ? InactivateCaption : ActivateCaption);
    cmdEditReg.setVisible(m_registryActive);
}

bool frmAsthma::mayEditRegistry()
{
    if (!m_bRegKey)
        m_shared.ErrorBox(
            L"You do not have the necessary security permission to edit the asthma registry.", InsufficientPermissions);
    return m_bRegKey;
}

void frmAsthma::openRegistryEditor()
{
    frmAsthmaReg editor(m_shared);
    m_shared.desktop().showModal(editor);
}

void frmAsthma::cmdActivate_Click()
{
    if (!mayEditRegistry())
        return;
    const Text question = Text(L"Are you sure you want to ") + (m_registryActive ? L"in" : L"")
        + L"activate this patient in the asthma registry?";
    Text title = L"Please Confirm";
    if (!m_shared.ConfirmBox(question, title))
        return;
    if (!send(L"MEVVAST SETREG", patient() + (m_registryActive ? L"^I" : L"^A")))
        return;
    const bool activated = !m_registryActive;
    if (activated)
        openRegistryEditor();
    setRegistryStatus(activated, activated ? L"Active" : L"Inactive");
    showRegistry();
}

void frmAsthma::cmdEditReg_Click()
{
    if (!mayEditRegistry() || isForeign()) // the editor would show the entry of the host's patient
        return;
    openRegistryEditor();
    showRegistry();
}

}
