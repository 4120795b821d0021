#include "tests/support/ControlFixture.h"
#include "tests/support/Editors.h"

namespace health::test {

class RecordCommands : public ControlFixture {
protected:
    static constexpr int Add = kalmevRepHistCtrl::Add;
    static constexpr int Edit = kalmevRepHistCtrl::Edit;
    static constexpr int Delete = kalmevRepHistCtrl::Delete;

    void click(int row, int command)
    {
        control.fgData.choose(row);
        host.transcript.clear();
        control.cmd[static_cast<std::size_t>(command)].click();
    }

    void add(int type)
    {
        control.cboType.selectItemData(type);
        host.transcript.clear();
        control.cmd[Add].click();
    }
};

// The editor's record and visit; a refusal has no visit.
template<typename Editor>
Text idsOf(Form& form)
{
    const auto& editor = dynamic_cast<Editor&>(form);
    if constexpr (requires { editor.m_sRefusalIen; })
        return editor.m_sRefusalIen;
    else
        return editor.m_sIEN + L"/" + editor.m_sVisit;
}

TEST_F(RecordCommands, EachTypeOpensItsEditor)
{
    openChild();
    host.encounter->visit = 99;
    using Ids = Text (*)(Form&);
    for (const auto& [type, record, show, ids, expected] :
        std::initializer_list<std::tuple<int, TextView, TextView, Ids, TextView>> {
            { 2, L"5", L"frmInf", idsOf<frmInf>, L"5/81" }, { 2, L"", L"frmInf", idsOf<frmInf>, L"/99" },
            { 4, L"5", L"frmElderView", idsOf<frmElderView>, L"5/81" },
            { 4, L"", L"frmElder", idsOf<frmElder>, L"/99" }, { 5, L"5", L"frmAsthma", idsOf<frmAsthma>, L"5/81" },
            { 5, L"", L"frmAsthma", idsOf<frmAsthma>, L"/99" }, { 6, L"5", L"frmTxc", idsOf<frmTxc>, L"5/81" },
            { 6, L"", L"frmTxc", idsOf<frmTxc>, L"/99" }, { 8, L"5", L"frmER", idsOf<frmER>, L"5/81" },
            { 8, L"", L"frmER", idsOf<frmER>, L"/99" }, { 7, L"5", L"frmRefusal", idsOf<frmRefusal>, L"5" },
            { 7, L"", L"frmRefusal", idsOf<frmRefusal>, L"" } }) {
        Text opened = L"none";
        host.transcript.clear();
        host.desktop.inForms = { [&opened, ids = ids](Form& form) { opened = ids(form); } };
        control.OpenRecord(type, Text(record), record.empty() ? L"" : L"81");
        EXPECT_LINES(L"show", L"show " + Text(show));
        EXPECT_EQ(opened, expected) << narrow(show);
    }
}

TEST_F(RecordCommands, RowsOpenByButtonMenuAndDoubleClick)
{
    openChild();
    host.encounter->preparations.clear();
    Text ids;
    const auto look = [&](Form& form) {
        ids = idsOf<frmInf>(form);
        reply(L"MEVREP GET", L"G2");
        push(L"VXR.12.REP"); // reloads while the editor is open
    };
    for (const auto& act : std::initializer_list<std::function<void()>> { [this] { control.cmd[Edit].click(); },
             [this] { control.mnuCmd[Edit].choose(); }, [this] { control.fgData.doubleClick(2); } }) {
        ids.clear();
        host.desktop.inForms = { look };
        control.fgData.choose(2);
        host.transcript.clear();
        act();
        EXPECT_EQ(ids, L"5/81");
        EXPECT_LINES(L"show", L"show frmInf");
    }
    for (const int flags : host.encounter->preparations)
        EXPECT_EQ(flags, 12); // the row has a visit: the user is not asked for one
    EXPECT_EQ(control.fgData.text(0, GridColumn::Summary), L"G2");
    EXPECT_EQ(control.fgData.row(), 2);
    reply(L"MEVVIF GET", L"5^1^3260310|81^X\r\n"); // locked
    push(L"REFRESH");
    host.transcript.clear();
    control.fgData.doubleClick(2);
    EXPECT_TRUE(host.lines(L"show").empty());
}

TEST_F(RecordCommands, EditorsGetTheUsersKeys)
{
    for (const bool holds : { true, false }) {
        control.UserControl_Terminate();
        host.user->keys = holds ? std::set<Text> { L"QASZMENU", L"MEVZ ELDER CASE EDIT" } : std::set<Text> {};
        open(12);
        int checked = 0;
        host.desktop.inForms = { [&](Form& form) {
                                    checked += dynamic_cast<frmAsthma&>(form).m_bRegKey == holds;
                                    EXPECT_EQ(form.height(), holds ? 5265 : 2400);
                                },
            [&](Form& form) { checked += dynamic_cast<frmElderView&>(form).m_bElder == holds; } };
        control.OpenRecord(5, L"5", L"81");
        control.OpenRecord(4, L"5", L"81");
        EXPECT_EQ(checked, 2) << holds;
    }
}

TEST_F(RecordCommands, MissingPermissionIsReportedFirst)
{
    reply(L"MEVUTL CHKSEC", L"0|0|0|0^0~"); // no PROVIDER
    open(12, L"F", L"4");
    host.encounter->usable = false;
    host.encounter->preparations.clear();
    for (const auto& [type, key] : { std::pair<int, TextView> { 2, L"MEVZ PEDIATRIC EDIT" },
             { 3, L"MEVZ PEDIATRIC EDIT" }, { 4, L"MEVZ ELDER CARE EDIT" }, { 5, L"MEVZ ASTHMA EDIT" },
             { 6, L"MEVZ TX CONTRACT EDIT" }, { 8, L"MEVZ ER EDIT" } }) {
        host.transcript.clear();
        control.OpenRecord(type, L"", L"");
        EXPECT_LINES(L"box|show|call|list",
            L"box [Insufficient Permissions] Editing not permitted, you do not hold either the PROVIDER key or the "
                + Text(key) + L" key.");
    }
    EXPECT_TRUE(host.encounter->preparations.empty());
    host.transcript.clear();
    control.OpenRecord(1, L"", L"");
    control.OpenRecord(9, L"", L"");
    control.OpenRecord(7, L"", L""); // needs no key and no visit
    EXPECT_LINES(L"box|show", L"box [Insufficient Permissions] " + shared.PermissionMessage(), L"show frmRefusal");
}

TEST_F(RecordCommands, WithoutAVisitNoEditorOpens)
{
    constexpr TextView NotSelected = L"box [Active Visit Not Selected] An active visit has not been selected.";
    openChild();
    host.encounter->opensVisit = false; // the user is asked, but opens none
    add(2);
    EXPECT_LINES(L"box|show", Text(NotSelected));
    reply(L"MEVVIF GET", L"5^^3260310^X\r\n"); // a record without a visit
    commitPatient(12, L"M", L"4");
    host.encounter->usable = false;
    click(1, Edit);
    EXPECT_LINES(L"box|show", Text(NotSelected));
    EXPECT_EQ(host.desktop.styles.back(), 48);
    commitPatient(12, L"F", L"30");
    add(1); // needs no visit
    EXPECT_LINES(L"box|show", L"show frmRepHist");
}

TEST_F(RecordCommands, DeletingAsksAndCallsByType)
{
    openChild();
    for (const auto& [row, label, call] :
        { std::tuple<int, TextView, TextView> { 0, L"Reproductive", L"call MEVREP DEL(12)" },
            { 1, L"Birth Measurements", L"call MEVBMSR DEL(12)" }, { 2, L"Infant Feeding", L"call MEVVIF DEL(5)" },
            { 3, L"Functional Status", L"call MEVVELD DEL(5)" }, { 5, L"Tx Contract", L"call MEVVTXC DEL(5)" },
            { 6, L"Refusal", L"call MEVREF DEL(5)" } }) {
        const Text question =
            L"box [Remove Record?] Are you sure you want to delete the selected " + Text(label) + L" record?";
        click(row, Delete); // answered No
        EXPECT_LINES(L"box|call|list", question);
        host.desktop.answers = { BoxAnswer::Yes };
        click(row, Delete);
        EXPECT_LINES(L"box|call|list", question, Text(call)); // and no reload
    }
    // An event while the question is open reloads after the deletion: the server compares with what the user saw.
    host.desktop.whileBoxIsOpen = [this] { push(L"REFUSAL.12.REF"); };
    host.desktop.answers = { BoxAnswer::Yes };
    click(6, Delete);
    EXPECT_EQ(host.calls().front(), L"call MEVREF DEL(5)");
    EXPECT_EQ(host.calls().size(), 1u + host.session->expected.size());
    reply(L"MEVREF DEL", L"-1^The record is locked.");
    host.desktop.answers = { BoxAnswer::Yes };
    click(6, Delete);
    EXPECT_EQ(host.boxes().back(), L"box [Error] The record is locked.");
    host.transcript.clear();
    setPatient(0); // not committed yet, but the refusal may not be changed any more
    control.cmd[Edit].click();
    control.cmd[Delete].click();
    control.OpenRecord(7, L"", L"");
    EXPECT_TRUE(host.transcript.empty());
}

TEST_F(RecordCommands, FailedDeletionLeavesTheListFollowingEvents)
{
    openChild();
    control.fgData.choose(6);
    host.patient->fails = true;
    control.cmd[Delete].click();
    host.patient->fails = false;
    EXPECT_BOXES(failureBox(L"kalmevRepHistCtrl at DelRec", L"The host is gone."));
    host.transcript.clear();
    push(L"REFUSAL.12.REF");
    EXPECT_EQ(host.calls(), host.session->expected);
}

TEST_F(RecordCommands, DeletingAsthmaOffersTheRegistry)
{
    openChild();
    const auto deletion = [&](std::deque<BoxAnswer> answers) {
        host.desktop.answers = std::move(answers);
        click(4, Delete);
        return host.calls();
    };
    EXPECT_EQ(deletion({ BoxAnswer::No }), Transcript {});
    EXPECT_EQ(host.boxes().size(), 1u);
    EXPECT_EQ(deletion({ BoxAnswer::Yes, BoxAnswer::No }), Transcript { L"call MEVVAST DEL(5)" });
    EXPECT_EQ(
        host.boxes()[1], L"box [Inactivate Patient?] Do you wish to inactivate this patient from the asthma registry?");
    host.desktop.whileBoxIsOpen = [this] { setPatient(34); }; // the question was about the first patient
    EXPECT_EQ(deletion({ BoxAnswer::Yes, BoxAnswer::Yes }),
        (Transcript { L"call MEVVAST SETREG(12^I)", L"call MEVVAST DEL(5)" }));
    setPatient(12);
    reply(L"MEVVAST SETREG", L"-1");
    EXPECT_EQ(deletion({ BoxAnswer::Yes, BoxAnswer::Yes }),
        Transcript { L"call MEVVAST SETREG(12^I)" }); // stops; an error without a message shows no box
}

}
