#pragma once

#include "control/RecordCommands.h"
#include "control/RecordEvents.h"
#include "control/RecordGrid.h"
#include "platform/Menu.h"
#include "platform/controls/Button.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Grid.h"
#include "shared/modShared.h"

#include <array>

namespace health {

// The Personal Health panel: lists the current patient's records and follows the host's patient, visit and
// session events. It keeps no data beyond what the grid shows.
//
// Life cycle: constructed, UserControl_Initialize, then on first display UserControl_Show; UserControl_Terminate
// (called by the destructor if necessary) unsubscribes and uncounts the instance. Events are ignored until it is
// shown. No operation throws: failures are reported to the user.
class kalmevRepHistCtrl : private ICSS_SessionEvents {
public:
    static constexpr int Add = 0;
    static constexpr int Edit = 1;
    static constexpr int Delete = 2;
    static constexpr std::size_t CommandCount = 3;

    // Both must outlive the control.
    kalmevRepHistCtrl(modShared& shared, Host& host);
    ~kalmevRepHistCtrl();
    kalmevRepHistCtrl(const kalmevRepHistCtrl&) = delete;
    kalmevRepHistCtrl& operator=(const kalmevRepHistCtrl&) = delete;

    void UserControl_Initialize();
    void UserControl_Show();
    void UserControl_Terminate();
    // Places the controls on an area of this size, in twips. The front end sets the sizes of icon,
    // list and buttons beforehand.
    void UserControl_Resize(int width, int height);

    // The sinks for the host's patient and visit events; neither vetoes a change.
    ICSS_PatientEvents& patientEvents() { return m_patientEvents; }
    ICSS_EncounterEvents& encounterEvents() { return m_encounterEvents; }

    // Cancels the pending asynchronous request, if any.
    void AbortAsync();

    // Fills the grid with the current patient's records. After a failure, calls ClearPatientControls.
    void LoadGrid();
    // Replaces the rows by one that says that no patient is selected.
    void ClearPatientControls();

    // The services that the panel shares with its forms; they outlive the control.
    modShared& shared() { return m_shared; }

    // Opens the editor of a record on behalf of the host, even of a type that is never listed.
    void OpenRecord(int type, const Text& record, const Text& visit);

    // The services that the control works with.
    modShared& services() { return m_shared; }

    // The records behind the grid's rows, row for row; none without a patient.
    const RecordLines& recordLines() const { return m_grid.lines(); }
    // The patient whose records the grid shows; 0 without one.
    long listedPatient() const { return m_grid.patient(); }
    // The types whose records the last load could not read.
    const std::vector<const RecordType*>& unreadTypes() const { return m_grid.unread(); }
    // The patient's name as forms show it; empty if the host does not name it.
    Text patientName() const;
    // The key of the row whose record the panel has deleted last; empty without one.
    const Text& deletedKey() const { return m_deletedKey; }

    // Follows the host's connection to the server. Call it after UserControl_Show, once.
    void FollowConnection();
    // The seconds until the host tries to reach the server again; empty while it is connected. See CONNECTION in
    // api/Events.h.
    const Text& connection() const { return m_connection; }
    std::function<void()> ConnectionChange;
    // Asks the host to try now.
    void TryConnection();

    Image imgIcon; // its tool tip is the version text
    ComboBox cboType { ComboBox::Order::Sorted };
    std::array<Button, CommandCount> cmd;
    Grid fgData;
    std::array<MenuItem, CommandCount> mnuCmd;
    MenuItem mnuVisitDetail;
    Menu mnuContextPopup;

    // Handle of a pending asynchronous server request, 0 without one. Intended: the panel itself starts
    // no such request.
    long asyncHandle = 0;

private:
    static constexpr TextView Module = L"kalmevRepHistCtrl";
    using Procedure = void (kalmevRepHistCtrl::*)();

    // Patient and visit events have the same method names; this forwards each to its own procedure.
    template<typename Events, Procedure committed>
    class HostEvents : public Events {
    public:
        explicit HostEvents(kalmevRepHistCtrl& control)
            : m_control(control)
        {
        }
        bool Pending() override { return false; }
        void Committed() override { (m_control.*committed)(); }
        void Canceled() override { }

    private:
        kalmevRepHistCtrl& m_control;
    };

    bool trap(TextView procedure, const std::function<void()>& work) { return m_shared.trap(Module, procedure, work); }
    // An event handler that reports failures under the procedure's name.
    template<typename Work>
    auto trapped(TextView procedure, Work work)
    {
        return m_shared.trapped(Module, procedure, std::move(work));
    }

    void EventCallback(TextView name, TextView data) override;
    void RPCCallback(long handle, TextView reply) override;
    void RPCCallbackError(long handle, long code, TextView description) override;
    void ICSS_PatientEvents_Committed();
    void ICSS_EncounterEvents_Committed();

    void setUpCommands();
    PatientFacts currentPatient() const;
    bool loadRecords();
    void noteAnswer();
    void clearTypeList();
    void fillTypeList(const PatientFacts& patient);
    void catchUp();
    void loadPatient();
    void reload();
    SavedRecord newlySaved();
    void highlightVisit();

    int typeToAdd() const;
    void updateCommands();
    Text whyNotEditable(const std::optional<RecordRow>& row) const;
    void sayRefusal(const Button& button);
    void cmd_Click(int index);
    void DelRec(const RecordRow& row);
    void mnuVisitDetail_Click();
    void fgData_MouseUp(MouseButton button);

    modShared& m_shared;
    Host& m_host;
    HostEvents<ICSS_PatientEvents, &kalmevRepHistCtrl::ICSS_PatientEvents_Committed> m_patientEvents { *this };
    HostEvents<ICSS_EncounterEvents, &kalmevRepHistCtrl::ICSS_EncounterEvents_Committed> m_encounterEvents { *this };

    bool m_initialized = false;
    bool m_counted = false; // in modShared's instance count
    bool m_active = false;
    EditKeys m_editKeys;
    RecordCommands m_commands { m_shared, m_editKeys };
    RecordEvents m_events { m_shared, Module, *this };
    RecordGrid m_grid { fgData };
    Text m_deletedKey;
    Text m_connection;
    int m_savedSeen = 0; // the last save whose row was shown
    bool m_saysRefusal = false; // the status line says why a command cannot run
    bool m_loading = false;
    bool m_deleting = false; // from the first question to the server's answer
    // Pending work for catchUp:
    bool m_reloadWanted = false;
    bool m_patientChanged = false;
    bool m_changeFailed = false; // the new patient could not be loaded; the next event retries
};

}
