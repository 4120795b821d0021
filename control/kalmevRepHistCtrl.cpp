#include "control/kalmevRepHistCtrl.h"

#include "control/FlagScope.h"
#include "control/GridLoader.h"
#include "shared/modConst.h"
#include "text/Conversions.h"

#include <algorithm>

namespace health {

namespace {

constexpr TextView RefreshEvent = L"REFRESH";

constexpr int LabelColumnWidth = 1600; // twips
constexpr int LabelColumnAlignment = 6;

}

kalmevRepHistCtrl::kalmevRepHistCtrl(modShared& shared, Host& host)
    : m_shared(shared)
    , m_host(host)
{
    setUpCommands();
    fgData.SelectionChange = cboType.Click = [this] {
        if (!m_loading) // at its end a load does it once
            updateCommands();
    };
    fgData.DblClick = [this] { cmd[Edit].click(); };
    fgData.MouseUp = trapped(L"fgData_MouseUp", [this](MouseButton button) { fgData_MouseUp(button); });
}

kalmevRepHistCtrl::~kalmevRepHistCtrl() { UserControl_Terminate(); }

// --- Start and end ---

void kalmevRepHistCtrl::UserControl_Initialize()
{
    trap(L"UserControl_Initialize", [&] {
        m_initialized = true;
        m_counted = m_shared.InitObjects(m_host, true);
        // Before the permissions are known: the tip tells of them from the second instance on. Intended.
        imgIcon.setToolTip(m_shared.VersionText());
        m_shared.CheckSecurity(DisableRepHistParameter, RepHistKey);
        setUpGrid();
        fetchEditKeys();
    });
}

void kalmevRepHistCtrl::setUpCommands()
{
    static constexpr std::array<TextView, CommandCount> buttons { L"&Add", L"&Edit", L"&Delete" };
    static constexpr std::array<TextView, CommandCount> items { L"&Add Record", L"&Edit Record", L"De&lete Record" };
    for (std::size_t i = 0; i < CommandCount; ++i) {
        cmd[i].setCaption(buttons[i]);
        mnuCmd[i].setCaption(items[i]);
        cmd[i].setEnabled(false);
        mnuCmd[i].setEnabled(false);
        cmd[i].Click = trapped(L"cmd_Click", [this, i] { cmd_Click(static_cast<int>(i)); });
        mnuCmd[i].Click = trapped(L"mnuCmd_Click", [this, i] { cmd_Click(static_cast<int>(i)); });
    }
    cboType.setVisible(false); // until a patient decides what it offers
    mnuVisitDetail.setCaption(L"&Display Visit Detail");
    mnuVisitDetail.setEnabled(false);
    mnuVisitDetail.Click = trapped(L"mnuVisitDetail_Click", [this] { mnuVisitDetail_Click(); });
    mnuContextPopup.setItems({ &mnuCmd[Add], &mnuCmd[Edit], &mnuCmd[Delete], nullptr, &mnuVisitDetail });
}

void kalmevRepHistCtrl::setUpGrid()
{
    fgData.setColumnCount(GridColumn::Count);
    fgData.setColumnWidth(GridColumn::Label, LabelColumnWidth);
    fgData.setColumnAlignment(GridColumn::Label, LabelColumnAlignment);
    for (int column = GridColumn::Record; column < GridColumn::Count; ++column)
        fgData.setColumnHidden(column, true);
    fgData.setWordWrap(true);
}

void kalmevRepHistCtrl::fetchEditKeys()
{
    const Text held = m_shared.user().hasKeys(
        L"MEVZ ELDER CASE EDIT^MEVZ PEDIATRIC EDIT^MEVZ ER EDIT^MEVZ ASTHMA EDIT^MEVZ TX CONTRACT EDIT^QASZMENU");
    // By key: the answer's fourth and fifth pieces stand crosswise to the flags.
    using enum EditKey;
    static constexpr std::array<EditKey, EditKeyCount> answers { Elder, Pediatric, Er, Asthma, TxContract, Registry };
    for (std::size_t i = 0; i < answers.size(); ++i)
        m_editKeys[static_cast<std::size_t>(answers[i])] = pieceView(held, L"^", static_cast<PieceNumber>(i + 1)) == L"1";
}

void kalmevRepHistCtrl::UserControl_Show()
{
    trap(L"UserControl_Show", [&] {
        if (m_active)
            return;
        m_active = true;
        ICSS_PatientEvents_Committed();
        ICSS_EncounterEvents_Committed();
        m_shared.session().registerEvent(RefreshEvent, *this);
        m_refreshRegistered = true;
    });
}

void kalmevRepHistCtrl::UserControl_Terminate()
{
    if (!m_initialized)
        return;
    m_initialized = false;
    m_active = false;
    // Each step on its own: a session that fails must not keep the host objects alive.
    AbortAsync();
    unsubscribe(L"UserControl_Terminate");
    trap(L"UserControl_Terminate", [&] {
        if (m_refreshRegistered)
            m_shared.session().unregisterEvent(RefreshEvent, *this);
        m_refreshRegistered = false;
    });
    if (std::exchange(m_counted, false))
        m_shared.ReleaseObjects();
}

void kalmevRepHistCtrl::UserControl_Resize(int width, int height)
{
    constexpr int margin = 50;
    constexpr int gap = 30;
    constexpr int buttonGap = 20;
    constexpr int buttonMargin = 60;

    const int rowHeight = std::max(imgIcon.place().height, cboType.place().height);
    const auto placed = [](const Place& size, int left, int top) {
        return Place { left, top, size.width, size.height };
    };
    const auto centred = [&](const Place& size) { return gap + (rowHeight - size.height) / 2; };
    imgIcon.setPlace(placed(imgIcon.place(), margin, centred(imgIcon.place())));
    cboType.setPlace(placed(cboType.place(), imgIcon.place().right() + margin, centred(cboType.place())));

    const int top = gap + rowHeight + gap;
    int buttonTop = top;
    for (Button& button : cmd) {
        button.setPlace(placed(button.place(), width - buttonMargin - button.place().width, buttonTop));
        buttonTop = button.place().bottom() + buttonGap;
    }
    const int gridWidth = cmd[Add].place().left - margin - margin;
    fgData.setPlace({ margin, top, std::max(0, gridWidth), std::max(0, height - top - gap) });
}

void kalmevRepHistCtrl::AbortAsync()
{
    trap(L"AbortAsync", [&] {
        if (const long pending = std::exchange(asyncHandle, 0))
            m_shared.session().abortRequest(pending);
    });
}

// --- Host events ---

void kalmevRepHistCtrl::ICSS_PatientEvents_Committed()
{
    // A change under a box of a running load waits, or two patients' rows would mix.
    m_patientChanged = m_patientChanged || m_active;
    catchUp();
}

// Loads what changed, until nothing came meanwhile: a box that a load shows lets further events in. Under the question
// whether to delete a record the list stays as the user saw it: a change of the record made meanwhile counts as unseen.
void kalmevRepHistCtrl::catchUp()
{
    while (m_active && !m_loading && (m_patientChanged || (m_reloadWanted && !m_deleting))) {
        const FlagScope loading(m_loading);
        m_reloadWanted = false;
        if (std::exchange(m_patientChanged, false))
            loadPatient();
        else
            trap(L"EventCallback", [this] { reload(); });
    }
}

void kalmevRepHistCtrl::loadPatient()
{
    // Until the change is made, nothing is offered for the former patient.
    m_changeFailed = !trap(L"ICSS_PatientEvents_Committed", [&] {
        unsubscribe(L"ICSS_PatientEvents_Committed");
        clearTypeList();
        const long number = m_shared.patient().number();
        if (number == 0) {
            ClearPatientControls();
            return;
        }
        subscribe(number);
        fillTypeList(currentPatient());
        LoadGrid();
        if (fgData.rowCount() > 0)
            fgData.showRow(0);
    });
    // Never one patient's records under another's name.
    if (m_changeFailed) {
        clearTypeList();
        ClearPatientControls();
    }
}

void kalmevRepHistCtrl::ICSS_EncounterEvents_Committed()
{
    trap(L"ICSS_EncounterEvents_Committed", [&] {
        if (!m_active)
            return;
        updateCommands();
        highlightVisit();
        // A visit that was chosen is news as well; without one the host only tells that the patient has changed.
        if (m_changeFailed && m_shared.encounter().visitNumber() != 0)
            m_patientChanged = true;
    });
    catchUp();
}

void kalmevRepHistCtrl::subscribe(long patientNumber)
{
    m_visitEventName = L"VXR." + wholeText(patientNumber);
    m_refusalEventName = L"REFUSAL." + wholeText(patientNumber);
    m_shared.session().registerEvent(m_visitEventName, *this);
    m_shared.session().registerEvent(m_refusalEventName, *this);
}

void kalmevRepHistCtrl::unsubscribe(TextView procedure)
{
    if (m_visitEventName.empty())
        return;
    // The names go first: whatever the session does, events of the old patient no longer match.
    const Text visitEventName = std::exchange(m_visitEventName, {});
    const Text refusalEventName = std::exchange(m_refusalEventName, {});
    // Each on its own: the session keeps no subscription of this control because another one failed.
    for (const Text& name : { visitEventName, refusalEventName })
        trap(procedure, [&] { m_shared.session().unregisterEvent(name, *this); });
}

bool kalmevRepHistCtrl::concernsPatient(TextView eventName) const
{
    const auto below = [&](const Text& name) {
        return !name.empty() && MatchesLeading(eventName, name + L".", LetterCase::Exact);
    };
    return below(m_visitEventName) || below(m_refusalEventName);
}

void kalmevRepHistCtrl::EventCallback(TextView name, TextView)
{
    if (m_active && (concernsPatient(name) || MatchesLeading(name, RefreshEvent, LetterCase::Exact))) {
        // A change of the patient that failed is made up for.
        m_patientChanged = m_patientChanged || m_changeFailed;
        m_reloadWanted = true;
    }
    catchUp();
}

void kalmevRepHistCtrl::RPCCallback(long, TextView) { }

void kalmevRepHistCtrl::RPCCallbackError(long, long, TextView) { }

// --- Grid ---

PatientFacts kalmevRepHistCtrl::currentPatient() const
{
    Patient& patient = m_shared.patient();
    const long number = patient.number();
    if (number == 0)
        return {};
    return { .number = number, .sex = patient.sex(), .age = leadingNumber(patient.age()) };
}

void kalmevRepHistCtrl::clearTypeList()
{
    cboType.clear();
    cboType.setVisible(false);
}

void kalmevRepHistCtrl::fillTypeList(const PatientFacts& patient)
{
    cboType.clear();
    for (const RecordType& type : recordTypes()) {
        if (type.isOffered(patient))
            cboType.addItem(type.listText, type.code());
    }
    cboType.setVisible(cboType.count() > 0);
    if (cboType.count() == 0)
        return;
    // The leading blank sorts it first.
    cboType.addItem(L" To add, select a form...", 0);
    cboType.selectItemData(0);
}

void kalmevRepHistCtrl::LoadGrid() { loadRecords(); }

bool kalmevRepHistCtrl::loadRecords()
{
    const FlagScope loading(m_loading);
    const bool loaded = trap(L"LoadGrid", [&] {
        m_shared.SetStatusText(L"Loading Personal Health Data");
        fillGrid();
        m_shared.SetStatusText(L"");
        updateCommands();
        highlightVisit();
    });
    if (!loaded)
        ClearPatientControls();
    return loaded;
}

void kalmevRepHistCtrl::fillGrid()
{
    fgData.setHint(L"Loading ...");
    const DrawingPause pause(fgData);
    fgData.clear();
    fgData.setRowCount(0);
    fgData.setColumnHidden(GridColumn::Label, false);
    const PatientFacts patient = currentPatient();
    GridLoader loader(m_shared, fgData, patient);
    loader.load();
    fgData.select(-1);
    fgData.setHint(loader.remark());
}

void kalmevRepHistCtrl::ClearPatientControls()
{
    trap(L"ClearPatientControls", [&] {
        fgData.setHint({});
        fgData.clear();
        fgData.setRowCount(1);
        fgData.setColumnHidden(GridColumn::Label, true);
        fgData.setText(0, GridColumn::Summary, L"Patient Not Selected");
        fgData.select(-1);
        updateCommands();
    });
}

void kalmevRepHistCtrl::reload()
{
    if (m_visitEventName.empty()) { // no patient
        updateCommands();
        return;
    }
    const Text savedRowKey(fgData.row() == -1 ? TextView() : fgData.rowData(fgData.row()));
    if (!loadRecords())
        return;
    fgData.select(-1);
    if (!savedRowKey.empty())
        selectRowOf(savedRowKey);
    updateCommands();
}

void kalmevRepHistCtrl::selectRowOf(TextView key)
{
    for (int row = 0; row < fgData.rowCount(); ++row) {
        if (fgData.rowData(row) != key)
            continue;
        fgData.select(row, GridColumn::Summary);
        fgData.showRow(row);
        return;
    }
}

void kalmevRepHistCtrl::highlightVisit()
{
    const Text visit = wholeText(m_shared.encounter().visitNumber());
    for (int row = 0; row < fgData.rowCount(); ++row) {
        const bool current = fgData.text(row, GridColumn::Visit) == visit;
        fgData.setCellForeColour(row, GridColumn::Summary, current ? Blue : DefaultColour);
    }
}

}
