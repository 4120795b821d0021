#include "api/Events.h"
#include "tests/support/ControlFixture.h"

namespace health::test {

class LifeCycle : public ControlFixture { };

TEST_F(LifeCycle, StartAsksForTheKeysAndShowSubscribesAfterLoading)
{
    setPatient(12);
    control.UserControl_Initialize();
    EXPECT_CALLS(
        L"call MEVUTL CHKSEC(PROVIDER|MEVZ CAC|MEVZ VIEW ONLY|MEVZ REP HIST EDIT^MEV DISABLE REP HIST EDITING)");
    EXPECT_EQ(host.session->subscriptions(), L"");
    EXPECT_EQ(control.imgIcon.toolTip(), L"1.0.0.0  Personal Health");
    EXPECT_EQ(control.fgData.column(0).width, 1600);
    EXPECT_TRUE(control.fgData.wordWrap());
    for (const int column : { 2, 3, 4, 5 })
        EXPECT_TRUE(control.fgData.column(column).hidden);
    host.transcript.clear();
    control.patientEvents().Committed(); // ignored before the first show
    control.encounterEvents().Committed();
    EXPECT_FALSE(control.patientEvents().Pending() || control.encounterEvents().Pending());
    EXPECT_TRUE(host.transcript.empty());

    control.UserControl_Show();
    EXPECT_LINES(L"register|unregister", L"register VXR.12", L"register REFUSAL.12", L"register REFRESH");
    EXPECT_EQ(host.transcript.back(), L"register REFRESH");
    reply(L"MEVUTL CHKSEC", L"1|0|1|0^0~");
    for (const TextView reason : { L"", L"You have the 'MEVZ VIEW ONLY' security key" }) {
        kalmevRepHistCtrl another(shared, host); // shows what the one before it has read
        another.UserControl_Initialize();
        EXPECT_EQ(another.imgIcon.toolTip(),
            L"1.0.0.0  Personal Health"
                + (reason.empty() ? L"" : L"\r\n\r\n" + Text(reason) + L", thus you cannot make modifications."));
    }
    host.transcript.clear();
    control.UserControl_Show(); // shown again after it was hidden
    EXPECT_TRUE(host.transcript.empty());
}

TEST_F(LifeCycle, WithoutAPatientTheGridSaysSo)
{
    reply(L"MEVVELD GET", L"7^^^NEEDS HELP\r\n");
    open(12);
    control.fgData.choose(0);
    commitPatient(0);
    EXPECT_EQ(summaries(), Transcript { L"Patient Not Selected" });
    EXPECT_EQ(row(0), L"|Patient Not Selected||||");
    EXPECT_TRUE(control.fgData.column(0).hidden);
    EXPECT_EQ(control.fgData.row(), -1);
    EXPECT_TRUE(control.cboType.count() == 0 && !control.cboType.isVisible());
    control.fgData.choose(0);
    EXPECT_EQ(enabledCommands(), L"----");
    EXPECT_EQ(host.session->subscriptions(), L"REFRESH ");
    host.transcript.clear();
    push(L"REFRESH");
    commitPatient(0);
    EXPECT_LINES(L"call|list|register|unregister");
    commitPatient(12);
    EXPECT_FALSE(control.fgData.column(0).hidden);
}

TEST_F(LifeCycle, EventsThatReload)
{
    open(12);
    for (const auto& [name, reloads] :
        { std::pair<TextView, bool> { L"VXR.12.VELD", true }, { L"REFUSAL.12.REF", true }, { L"REFRESH", true },
            { L"REFRESHX", true }, { L"VXR.12", false }, { L"VXR.123.VELD", false }, { L"VXR.34.VELD", false },
            { L"vxr.12.VELD", false }, { L"refresh", false }, { L".", false }, { L"", false } }) {
        host.transcript.clear();
        host.session->pushToAll(name);
        EXPECT_EQ(!host.calls().empty(), reloads) << narrow(name);
    }
    commitPatient(0);
    setPatient(12); // changed, but not yet committed
    host.transcript.clear();
    host.session->pushToAll(L".x"); // no empty name may match
    EXPECT_TRUE(host.calls().empty());
}

TEST_F(LifeCycle, SelectionSurvivesAReloadByItsKey)
{
    reply(L"MEVVELD GET", L"5^^^A\r\n7^^^B\r\n");
    reply(L"MEVVAST GET", L"7^^^MILD\r\n");
    open(12);
    control.fgData.choose(2); // the asthma record 7, not the functional status of the same number
    reply(L"MEVVELD GET", L"5^^^A\r\n6^^^NEW\r\n7^^^B\r\n");
    push(L"VXR.12.VELD");
    EXPECT_EQ(control.fgData.rowData(control.fgData.row()), L"AS^7");
    EXPECT_EQ(control.fgData.selectedColumn(), 1);
    EXPECT_EQ(control.fgData.shownRow(), control.fgData.row());
    EXPECT_EQ(enabledCommands(), L"-ED-");

    reply(L"MEVVAST GET", L"");
    push(L"VXR.12.VAST"); // another user deleted it
    EXPECT_EQ(control.fgData.row(), -1);
    EXPECT_EQ(enabledCommands(), L"----");
    control.fgData.choose(0);
    push(L"REFRESH");
    EXPECT_EQ(control.fgData.row(), 0);
    commitPatient(34); // has a row of the same key
    EXPECT_EQ(control.fgData.row(), -1);
}

TEST_F(LifeCycle, SavedRowIsShownAndHighlightedOnce)
{
    openChild();
    const auto shownRow = [&] {
        push(L"VXR.12.VAST", OwnChange);
        return control.fgData.flashedRow();
    };
    const auto highlight = [&](TextView kind, TextView record) {
        control.fgData.flashRow(-1);
        shared.noteSaved(kind, record, L"");
        return shownRow();
    };
    EXPECT_EQ(highlight(L"BMSR", L"12"), 1);
    EXPECT_EQ(highlight(L"VAST", L"5"), 4);
    EXPECT_EQ(control.fgData.shownRow(), 4);
    control.fgData.flashRow(-1);
    EXPECT_EQ(shownRow(), -1); // a later event
    EXPECT_EQ(highlight(L"VAST", L"6"), -1); // no such row
    reply(L"MEVVTXC GET", L"5^^3260310|81^X\r\n9^^3260311|82^Y\r\n");
    EXPECT_EQ(highlight(L"VTXC", L""), 6); // an added record is the new row
    commitPatient(13, L"F", L"4");
    shared.noteSaved(L"VAST", L"5", L"");
    commitPatient(12, L"F", L"4"); // a save for the former patient
    control.fgData.flashRow(-1);
    EXPECT_EQ(shownRow(), -1);
    EXPECT_EQ(highlight(L"", L"5"), -1); // a record that is not listed
}

TEST_F(LifeCycle, OpenFormsFollowPatientAndOtherSessions)
{
    struct Watcher : FormWatcher {
        Text log;
        void patientChanged() override { log += L"patient "; }
        void recordsChanged(TextView kind) override { log += Text(kind) + L" "; }
    } watcher;
    openChild();
    shared.addForm(watcher);
    push(L"VXR.12.VELD");
    push(L"REFUSAL.12.REF");
    push(L"VXR.12.VELD", OwnChange);
    push(L"REFRESH");
    push(L"VXR.13.VELD");
    shared.keepEntry(L"Entry discarded: Add", [] {});
    shared.noteRegistryDue(L"12", L"01/10/2027");
    commitPatient(13, L"F", L"4");
    EXPECT_EQ(shared.registryDue(L"12"), L"");
    EXPECT_EQ(host.lines(L"event ").back(), L"event DISCARDED "); // the entry is not offered for another patient
    EXPECT_EQ(watcher.log, L"VELD REF patient ");
    shared.removeForm(watcher);
    commitPatient(12, L"F", L"4");
    EXPECT_EQ(watcher.log, L"VELD REF patient ");
}

TEST_F(LifeCycle, EventDuringABoxOfALoadReloadsAfterwards)
{
    open(12);
    for (const bool patientChanges : { false, true }) {
        host.transcript.clear();
        reply(L"MEVVELD GET", L"-1^Broken list.\r\n");
        host.desktop.whileBoxIsOpen = [&] {
            reply(L"MEVVELD GET", L"5^^^A\r\n");
            push(patientChanges ? L"VXR.34.VELD" : L"VXR.12.VELD");
        };
        patientChanges ? commitPatient(34, L"M") : push(L"REFRESH");
        EXPECT_EQ(summaries(), Transcript { L"Toileting=A" }) << patientChanges;
        EXPECT_BOXES(L"box [Error] Broken list.") << patientChanges;
    }
}

TEST_F(LifeCycle, EventDuringTheReportOfAFailureReloadsAfterwards)
{
    open(12);
    reply(L"MEVVELD GET", L"5^^^A\r\n");
    host.patient->fails = true;
    host.desktop.whileBoxIsOpen = [&] {
        host.patient->fails = false;
        push(L"VXR.12.VELD");
    };
    control.LoadGrid();
    EXPECT_EQ(summaries(), Transcript { L"Patient Not Selected" }); // called directly: events are not caught up with
    host.patient->fails = true;
    host.desktop.whileBoxIsOpen = [&] { host.patient->fails = false; };
    push(L"REFRESH");
    push(L"VXR.12.VELD");
    EXPECT_EQ(summaries(), Transcript { L"Toileting=A" });
    // Nothing is thrown although the event's load fails too.
    host.patient->fails = true;
    host.desktop.whileBoxIsOpen = [&] { push(L"REFRESH"); };
    EXPECT_NO_THROW(commitPatient(12));
}

TEST_F(LifeCycle, PatientChangeDuringABoxOfALoadNeverMixesTwoPatients)
{
    host.session->reply(L"MEVVTXC GET", L"12", L"1^^^PAIN|P\r\n");
    host.session->reply(L"MEVVTXC GET", L"34", L"2^^^MENTAL HEALTH|M\r\n");
    open(12);
    reply(L"MEVVELD GET", L"-1^Broken list.\r\n");
    host.desktop.whileBoxIsOpen = [&] { commitPatient(34, L"M"); };
    push(L"REFRESH");
    EXPECT_EQ(summaries(), Transcript { L"Type=Mental Health" });
    EXPECT_EQ(host.session->subscriptions(), L"REFRESH REFUSAL.34 VXR.34 ");
}

TEST_F(LifeCycle, FailedPatientChangeShowsNoRecordsAndIsRetriedByTheNextEvent)
{
    reply(L"MEVVELD GET", L"5^^^A\r\n");
    open(12, L"M");
    host.patient->failsSex = true;
    commitPatient(34, L"F", L"4");
    EXPECT_EQ(host.session->subscriptions(), L"REFRESH REFUSAL.34 VXR.34 ");
    EXPECT_EQ(summaries(), Transcript { L"Patient Not Selected" });
    EXPECT_FALSE(control.cboType.isVisible());
    EXPECT_BOXES(failureBox(L"kalmevRepHistCtrl at ICSS_PatientEvents_Committed", L"The sex is not known."));
    control.encounterEvents().Committed(); // the host raises it with each change of the patient
    EXPECT_EQ(host.boxes().size(), 1u);
    host.patient->failsSex = false;
    host.encounter->visit = 81;
    control.encounterEvents().Committed();
    EXPECT_EQ(summaries(), Transcript { L"Toileting=A" });
    host.patient->failsSex = true;
    commitPatient(34, L"F", L"4");
    host.patient->failsSex = false;
    push(L"REFRESH");
    EXPECT_EQ(summaries(), Transcript { L"Toileting=A" });
    EXPECT_EQ(control.cboType.count(), 7); // a girl's
    EXPECT_TRUE(control.cboType.isVisible());
}

TEST_F(LifeCycle, RowsOfTheCurrentVisitAreHighlighted)
{
    reply(L"MEVVELD GET", L"1^^3260301|81^A\r\n2^^3260302|812^B\r\n3^^3260303^C\r\n");
    host.encounter->visit = 81;
    open(12);
    const auto colours = [&] { // "B" for a blue summary
        Text text;
        for (int index = 0; index < control.fgData.rowCount(); ++index) {
            text += control.fgData.cellForeColour(index, 1) == Blue ? L'B' : L'-';
            EXPECT_EQ(control.fgData.cellForeColour(index, 0), DefaultColour);
        }
        return text;
    };
    EXPECT_EQ(colours(), L"B--"); // 812 is another visit
    EXPECT_EQ(summaries().back(), L"03/03/2026: Toileting=C");
    host.encounter->visit = 0;
    host.transcript.clear();
    control.encounterEvents().Committed();
    EXPECT_EQ(colours(), L"---"); // rows without a visit do not match
    EXPECT_CALLS();
}

TEST_F(LifeCycle, TerminateUnsubscribesAndTheLastPanelReleasesTheObjects)
{
    open(12);
    {
        kalmevRepHistCtrl second(shared, host);
        second.UserControl_Initialize();
        second.UserControl_Show();
        EXPECT_EQ(host.session->subscriptions(), L"REFRESH REFRESH REFUSAL.12 REFUSAL.12 VXR.12 VXR.12 ");
        second.asyncHandle = 4;
        host.transcript.clear();
        second.UserControl_Terminate();
        EXPECT_LINES(L"", L"abort 4", L"unregister VXR.12", L"unregister REFUSAL.12", L"unregister REFRESH");
    } // its destructor does not release it again
    EXPECT_TRUE(shared.hasSession());
    control.UserControl_Terminate();
    EXPECT_FALSE(shared.hasSession());
    EXPECT_EQ(host.session->subscriptions(), L"");
    control.UserControl_Initialize();
    host.transcript.clear();
    control.UserControl_Terminate(); // never shown this time
    EXPECT_TRUE(host.transcript.empty());
}

TEST_F(LifeCycle, FailuresNeverReachTheHost)
{
    host.user->fails = true;
    setPatient(12);
    control.UserControl_Initialize();
    EXPECT_BOXES(failureBox(L"kalmevRepHistCtrl at UserControl_Initialize", L"The user object is gone."));
    host.session->objects.clear();
    // Every call of the session fails from here on; the end still releases the panel.
    control.UserControl_Show();
    host.session->failsSubscriptions = true;
    host.transcript.clear();
    EXPECT_NO_THROW(control.UserControl_Terminate());
    EXPECT_LINES(L"unregister", L"unregister VXR.12", L"unregister REFUSAL.12", L"unregister REFRESH");
    EXPECT_FALSE(shared.hasSession());
}

TEST_F(LifeCycle, ControlsArePlacedInTwips)
{
    for (Button& button : control.cmd)
        button.setPlace({ 0, 0, 900, 300 });
    control.imgIcon.setPlace({ 0, 0, 240, 240 });
    control.cboType.setPlace({ 0, 0, 3000, 320 });
    control.UserControl_Resize(9000, 6000);
    EXPECT_EQ(control.cmd[2].place(), (Place { 8040, 1020, 900, 300 }));
    EXPECT_EQ(control.fgData.place(), (Place { 50, 380, 7940, 5590 }));
    EXPECT_EQ(control.cboType.place(), (Place { 340, 30, 3000, 320 }));
    control.UserControl_Resize(100, 100); // smaller than its parts
    EXPECT_EQ(control.fgData.place().width + control.fgData.place().height, 0);
}

}
