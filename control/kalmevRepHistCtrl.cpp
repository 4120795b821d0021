#include "control/kalmevRepHistCtrl.h"

#include "api/Events.h"
#include "platform/FlagScope.h"
#include "shared/modConst.h"
#include "text/Conversions.h"

#include <algorithm>
#include <utility>

namespace health {

namespace {

void setRefusal(CommandControl& command, const std::optional<Text>& refusal)
{
    command.setEnabled(refusal == L"");
    command.setRefusal(refusal.value_or(L""));
}

}

kalmevRepHistCtrl::kalmevRepHistCtrl(modShared& shared, Host& host)
    : m_shared(shared)
    , m_host(host)
{
    setUpCommands();
    fgData.SelectionChange = cboType.Click = [this] {
        if (!m_loading) // a load does it once, at its end
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
        // Intended: before CheckSecurity, so the tool tip contains the permission message from the second instance on.
        imgIcon.setToolTip(m_shared.VersionText());
        m_shared.CheckSecurity(DisableRepHistParameter, RepHistKey);
        m_grid.setUp();
        m_editKeys.fetch(m_shared.user());
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
        cmd[i].Refused = [this, i] { sayRefusal(cmd[i]); };
        cmd[i].Click = trapped(L"cmd_Click", [this, i] { cmd_Click(static_cast<int>(i)); });
        mnuCmd[i].Click = trapped(L"mnuCmd_Click", [this, i] { cmd_Click(static_cast<int>(i)); });
    }
    cboType.setVisible(false); // until a patient is known
    mnuVisitDetail.setCaption(L"&Display Visit Detail");
    mnuVisitDetail.setEnabled(false);
    mnuVisitDetail.Click = trapped(L"mnuVisitDetail_Click", [this] { mnuVisitDetail_Click(); });
    mnuContextPopup.setItems({ &mnuCmd[Add], &mnuCmd[Edit], &mnuCmd[Delete], nullptr, &mnuVisitDetail });
}

void kalmevRepHistCtrl::UserControl_Show()
{
    trap(L"UserControl_Show", [&] {
        if (m_active)
            return;
        m_active = true;
        ICSS_PatientEvents_Committed();
        ICSS_EncounterEvents_Committed();
        m_events.followRefresh();
    });
}

void kalmevRepHistCtrl::UserControl_Terminate()
{
    if (!m_initialized)
        return;
    m_initialized = false;
    m_active = false;
    // A failing step must not prevent the others: the host objects must be released.
    AbortAsync();
    m_events.leavePatient(L"UserControl_Terminate");
    m_events.leaveRefresh(L"UserControl_Terminate");
    m_events.leaveConnection(L"UserControl_Terminate");
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
    m_shared.forgetEntries();
    m_shared.forgetRegistryDue();
    m_shared.notifyPatientChanged();
    // During a load the change stays pending, or two patients' rows would mix.
    m_patientChanged = m_patientChanged || m_active;
    catchUp();
}

// Repeats until no event arrived during the load; message boxes shown by a load run the event loop. While the user is
// asked whether to delete a record there is no reload, so that the server detects a change that the user has not seen.
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
    // The former patient's types must not remain if a later step fails.
    m_changeFailed = !trap(L"ICSS_PatientEvents_Committed", [&] {
        m_events.leavePatient(L"ICSS_PatientEvents_Committed");
        clearTypeList();
        m_savedSeen = m_shared.lastSaved().sequence;
        m_deletedKey.clear();
        const long number = m_shared.patient().number();
        if (number == 0) {
            ClearPatientControls();
            return;
        }
        m_events.followPatient(number);
        fillTypeList(currentPatient());
        LoadGrid();
        if (fgData.rowCount() > 0)
            fgData.showRow(0);
    });
    // Never leave one patient's records under another's name.
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
        // A newly chosen visit also triggers the retry; an event without a visit only accompanies a change of patient.
        if (m_changeFailed && m_shared.encounter().visitNumber() != 0)
            m_patientChanged = true;
    });
    catchUp();
}

void kalmevRepHistCtrl::EventCallback(TextView name, TextView data)
{
    if (name == ConnectionEvent) {
        m_connection = data;
        raise(ConnectionChange);
        return;
    }
    if (m_active && m_events.concerns(name)) {
        if (const TextView kind = m_events.changedByOthers(name, data); !kind.empty())
            m_shared.notifyRecordsChanged(kind);
        // Retries a failed change of the patient.
        m_patientChanged = m_patientChanged || m_changeFailed;
        m_reloadWanted = true;
    }
    catchUp();
}

void kalmevRepHistCtrl::FollowConnection()
{
    if (m_active)
        trap(L"FollowConnection", [&] { m_events.followConnection(); });
}

void kalmevRepHistCtrl::TryConnection()
{
    trap(L"TryConnection", [&] { m_shared.session().raiseEvent(TryNowEvent, {}); });
}

// Intended: empty, because the panel starts no asynchronous requests.
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
    // The leading blank makes it sort first.
    cboType.addItem(L" To add, select a form...", 0);
    cboType.selectItemData(0);
}

void kalmevRepHistCtrl::LoadGrid() { loadRecords(); }

bool kalmevRepHistCtrl::loadRecords()
{
    const FlagScope loading(m_loading);
    const bool loaded = trap(L"LoadGrid", [&] {
        m_shared.SetStatusText(L"Loading Personal Health Data");
        m_grid.load(m_shared, currentPatient());
        m_shared.SetStatusText(L"");
        updateCommands();
        highlightVisit();
        noteAnswer();
    });
    if (!loaded)
        ClearPatientControls();
    return loaded;
}

// The list was read, so the server is connected, whatever the host has reported before.
void kalmevRepHistCtrl::noteAnswer()
{
    if (!m_connection.empty() && m_grid.unread().empty()) {
        m_connection.clear();
        raise(ConnectionChange);
    }
}

void kalmevRepHistCtrl::ClearPatientControls()
{
    trap(L"ClearPatientControls", [&] {
        m_grid.showNoPatient();
        updateCommands();
    });
}

void kalmevRepHistCtrl::reload()
{
    if (!m_events.hasPatient()) {
        updateCommands();
        return;
    }
    const Text selectedKey = m_grid.selectedKey();
    const SavedRecord saved = newlySaved();
    const RecordTexts before = saved.kind.empty() ? RecordTexts() : m_grid.texts();
    if (!loadRecords())
        return;
    m_grid.selectKey(selectedKey);
    updateCommands();
    if (!saved.kind.empty())
        m_grid.showSaved(saved, before);
}

// The record that was saved since the last reload; without one its kind is empty.
SavedRecord kalmevRepHistCtrl::newlySaved()
{
    const SavedRecord& last = m_shared.lastSaved();
    return std::exchange(m_savedSeen, last.sequence) == last.sequence ? SavedRecord() : last;
}

void kalmevRepHistCtrl::highlightVisit() { m_grid.highlightVisit(wholeText(m_shared.encounter().visitNumber())); }

Text kalmevRepHistCtrl::patientName() const
{
    try {
        return listedPatient() == 0 ? Text() : m_shared.patientHeading().name;
    } catch (const Failure&) {
        return {}; // the name is only a courtesy
    }
}

// --- Commands ---

int kalmevRepHistCtrl::typeToAdd() const { return cboType.itemData(cboType.listIndex()); }

void kalmevRepHistCtrl::updateCommands()
{
    // A command without a refusal can run; after a failure none can.
    std::array<std::optional<Text>, CommandCount> refusals;
    std::optional<Text> noVisitDetail;
    trap(L"UpdateCommands", [&] {
        refusals[Add] = m_commands.whyNotAddable(typeToAdd());
        const auto row = m_grid.selected();
        refusals[Edit] = whyNotEditable(row);
        refusals[Delete] = refusals[Edit];
        noVisitDetail = !row ? refusals[Edit] : row->visit.empty() ? L"This record has no visit." : L"";
    });
    for (std::size_t i = 0; i < CommandCount; ++i) {
        setRefusal(cmd[i], refusals[i]);
        setRefusal(mnuCmd[i], refusals[i]);
    }
    setRefusal(mnuVisitDetail, noVisitDetail);
    // The menu opens at a row but adds a record of the type chosen above the list.
    mnuCmd[Add].setDetail(cmd[Add].isEnabled() ? cboType.text() : Text());
    if (std::exchange(m_saysRefusal, false))
        m_shared.SetStatusText(L"");
}

Text kalmevRepHistCtrl::whyNotEditable(const std::optional<RecordRow>& row) const
{
    const Text refusal = m_commands.whyNotEditable(row ? row->type : 0);
    return refusal.empty() && row->isLocked ? L"This record is locked." : refusal;
}

void kalmevRepHistCtrl::sayRefusal(const Button& button)
{
    m_shared.SetStatusText(button.refusal());
    m_saysRefusal = true;
}

void kalmevRepHistCtrl::cmd_Click(int index)
{
    if (index == Add) {
        m_commands.open(typeToAdd(), L"", L"");
        return;
    }
    const auto row = m_grid.selected();
    if (!row)
        return;
    if (index == Edit)
        m_commands.open(row->type, row->record, row->visit);
    else
        DelRec(*row);
}

void kalmevRepHistCtrl::DelRec(const RecordRow& row)
{
    {
        const FlagScope deleting(m_deleting);
        trap(L"DelRec", [&] {
            const Text key = m_grid.selectedKey(); // before the boxes, during which the selection may change
            if (m_commands.remove(row.type, row.record, row.label))
                m_deletedKey = key;
        });
    }
    catchUp();
}

void kalmevRepHistCtrl::OpenRecord(int type, const Text& record, const Text& visit)
{
    trap(L"OpenRecord", [&] { m_commands.open(type, record, visit); });
}

void kalmevRepHistCtrl::mnuVisitDetail_Click()
{
    if (const auto row = m_grid.selected())
        m_shared.VisitDetail(row->visit);
}

void kalmevRepHistCtrl::fgData_MouseUp(MouseButton button)
{
    if (button != MouseButton::Right)
        return;
    fgData.select(fgData.mouseRow());
    updateCommands();
    m_shared.desktop().popUp(mnuContextPopup);
}

}
