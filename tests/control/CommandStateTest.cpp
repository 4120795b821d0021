#include "tests/support/ControlFixture.h"

namespace health::test {

class CommandState : public ControlFixture {
protected:
    // The type numbers of the rows that may be edited.
    Text editable()
    {
        Text types;
        for (int row = 0; row < control.fgData.rowCount(); ++row) {
            control.fgData.choose(row);
            if (control.cmd[kalmevRepHistCtrl::Edit].isEnabled())
                types += control.fgData.text(row, GridColumn::Type);
        }
        return types;
    }

    // The type numbers that may be added.
    Text addable()
    {
        Text types;
        for (int index = 0; index < control.cboType.count(); ++index) {
            control.cboType.choose(index);
            if (control.cmd[kalmevRepHistCtrl::Add].isEnabled())
                types += std::to_wstring(control.cboType.itemData(index));
        }
        return types;
    }
};

TEST_F(CommandState, EditableTypesDependOnTheKeys)
{
    constexpr TextView NoKey = L"0|0|0|0^0~";
    for (const auto& [key, security, types] :
        { std::tuple<TextView, TextView, TextView> { L"", L"0|0|0|1^0~", L"17" }, // the reproductive key is enough
            { L"", L"1|0|0|0^1~", L"324567" }, // a provider, blocked by the parameter
            { L"MEVZ ELDER CASE EDIT", NoKey, L"47" }, { L"MEVZ PEDIATRIC EDIT", NoKey, L"327" },
            { L"MEVZ ASTHMA EDIT", NoKey, L"57" }, { L"MEVZ TX CONTRACT EDIT", NoKey, L"67" },
            { L"MEVZ ER EDIT", NoKey, L"7" }, { L"QASZMENU", NoKey, L"7" }, { L"MEVZ ELDER CARE EDIT", NoKey, L"7" },
            { L"", L"1|0|0|0^0~", L"1324567" } }) {
        control.UserControl_Terminate();
        host.user->keys = { Text(key) };
        reply(L"MEVUTL CHKSEC", security);
        openChild();
        EXPECT_EQ(editable(), types) << narrow(key) << narrow(security);
        EXPECT_TRUE(host.boxes().empty());
    }
    EXPECT_EQ(addable(), L"534276"); // a provider's, in the order of the names
}

TEST_F(CommandState, AddingNeedsAVisitExceptForThreeTypes)
{
    host.encounter->usable = false;
    openChild();
    EXPECT_EQ(addable(), L"37");
    commitPatient(12, L"F", L"30");
    EXPECT_EQ(addable(), L"71");
    for (const int flags : host.encounter->preparations)
        EXPECT_EQ(flags, 12);
    control.cboType.choose(1);
    EXPECT_EQ(control.mnuCmd[kalmevRepHistCtrl::Add].detail(), L"");
    host.encounter->usable = true;
    control.encounterEvents().Committed(); // a visit was opened: no new choice is needed
    EXPECT_TRUE(control.cmd[kalmevRepHistCtrl::Add].isEnabled());
    EXPECT_EQ(control.mnuCmd[kalmevRepHistCtrl::Add].detail(), L"Asthma Status");
}

TEST_F(CommandState, LockedRecordsAndVisitDetail)
{
    reply(L"MEVVELD GET", L"1^1^3260310|81^A\r\n2^0^3260310|82^B\r\n3^2^3260310^C\r\n");
    open(12);
    for (const auto& [row, commands] : { std::pair { 0, L"---V" }, { 1, L"-EDV" }, { 2, L"-ED-" } }) {
        control.fgData.choose(row);
        EXPECT_EQ(enabledCommands(), commands) << row;
    }
}

TEST_F(CommandState, RightButtonSelectsTheRowUnderTheMouseFirst)
{
    reply(L"MEVVELD GET", L"1^^3260310|81^A\r\n2^^3260310|82^B\r\n");
    reply(L"MEVUTL GETRPT", L"REPORT\r\n");
    open(12);
    control.fgData.choose(0);
    control.fgData.releaseMouse(MouseButton::Left, 1);
    EXPECT_EQ(host.desktop.lastMenu, nullptr);
    control.fgData.releaseMouse(MouseButton::Right, 1);
    EXPECT_EQ(host.desktop.lastMenu, &control.mnuContextPopup);
    EXPECT_EQ(control.fgData.row(), 1);
    control.mnuVisitDetail.choose();
    EXPECT_LINES(L"list MEVUTL|preview", L"list MEVUTL GETRPT(82)", L"preview [Visit Detail||||80|11] REPORT\r\n");
    control.cboType.selectItemData(4);
    host.encounter->usable = false;
    control.fgData.releaseMouse(MouseButton::Right, 1); // the menu is up to date on the same row too
    EXPECT_EQ(enabledCommands(), L"-EDV");
    for (const int beside : { -1, 2 }) {
        control.fgData.choose(1);
        control.fgData.releaseMouse(MouseButton::Right, beside);
        EXPECT_EQ(std::to_wstring(control.fgData.row()) + enabledCommands(), L"-1----") << beside;
    }
}

TEST_F(CommandState, EveryGreyCommandSaysWhy)
{
    const auto refusals = [this] {
        Transcript texts;
        for (std::size_t i = 0; i < control.cmd.size(); ++i) {
            EXPECT_EQ(control.cmd[i].refusal(), control.mnuCmd[i].refusal());
            EXPECT_EQ(control.cmd[i].isEnabled(), control.cmd[i].refusal().empty());
            texts.push_back(control.cmd[i].refusal());
        }
        texts.push_back(control.mnuVisitDetail.refusal());
        return texts;
    };
    const auto allSay = [](TextView add, TextView change, TextView detail) {
        return Transcript { Text(add), Text(change), Text(change), Text(detail) };
    };
    constexpr TextView noForm = L"Select a form above the list.";
    constexpr TextView noRecord = L"Select a record in the list.";
    open(0);
    EXPECT_EQ(refusals(), allSay(L"Select a patient.", L"Select a patient.", L"Select a patient."));

    reply(L"MEVREP GET", L"G0");
    reply(L"MEVVELD GET", L"1^1^3260310|81^A\r\n2^^3260310^B\r\n");
    commitPatient(12);
    EXPECT_EQ(refusals(), allSay(noForm, noRecord, noRecord));
    control.fgData.choose(1);
    EXPECT_EQ(refusals(), allSay(noForm, L"This record is locked.", L""));
    control.fgData.choose(2);
    control.cboType.selectItemData(4);
    EXPECT_EQ(refusals(), allSay(L"", L"", L"This record has no visit."));
    host.encounter->usable = false;
    control.encounterEvents().Committed();
    EXPECT_EQ(refusals(), allSay(L"An active visit has not been selected.", L"", L"This record has no visit."));

    // Who may not change records learns that first, even of a locked one.
    control.UserControl_Terminate();
    reply(L"MEVUTL CHKSEC", L"0|0|1|0^0~");
    open(12);
    const Text noKey =
        L"Editing not permitted, you do not hold either the PROVIDER key or the MEVZ ELDER CARE EDIT key.";
    control.fgData.choose(1);
    control.cboType.selectItemData(1);
    constexpr TextView viewOnly = L"You have the 'MEVZ VIEW ONLY' security key, thus you cannot make modifications.";
    EXPECT_EQ(refusals(), allSay(viewOnly, noKey, L""));
}

TEST_F(CommandState, WantedButGreyCommandSaysWhyInTheStatusLine)
{
    reply(L"MEVVELD GET", L"1^1^3260310|81^A\r\n2^^3260310|81^B\r\n");
    open(12);
    control.fgData.choose(0);
    host.transcript.clear();
    control.fgData.doubleClick(0); // Enter too
    control.cmd[kalmevRepHistCtrl::Add].click();
    EXPECT_LINES(L"status", L"status This record is locked.", L"status Select a form above the list.");
    control.fgData.choose(1); // the reason no longer holds
    EXPECT_LINES(L"status", L"status This record is locked.", L"status Select a form above the list.", L"status ");
    control.fgData.choose(0);
    EXPECT_EQ(host.lines(L"status").size(), 3U); // nothing that others wrote there goes
}

}
