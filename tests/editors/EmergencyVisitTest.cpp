#include "editors/frmER.h"
#include "tests/support/FormFixture.h"

namespace health::test {

class EmergencyVisit : public FormFixture<frmER> {
protected:
    EmergencyVisit() { form.m_sVisit = L"81"; }

    void load(TextView record)
    {
        form.m_sIEN = L"45";
        reply(L"MEVVER GET", record);
        open();
    }

    // The parameter of the save.
    Text saved()
    {
        host.transcript.clear();
        form.open(); // an earlier save may have closed it
        form.press(form.cmdOK);
        const Transcript calls = host.lines(L"call MEVVER SET");
        return calls.empty() ? Text() : calls.front().substr(15);
    }
};

TEST_F(EmergencyVisit, UntouchedNewVisitHasThirteenPieces)
{
    open();
    EXPECT_EQ(form.caption(), L"Add Emergency Room Record");
    EXPECT_FALSE(form.txtOther.canBeUsed() || form.txtDispOth.canBeUsed() || form.txtLoc.canBeUsed());
    form.press(form.cmdOK);
    EXPECT_CALLS(L"call MEVVER SET(^81^^^^^^^^^^^)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(EmergencyVisit, PiecesAreReadAndSavedInDifferentOrders)
{
    load(replies::Emergency);
    form.Form_Activate();
    EXPECT_CALLS(L"list MEVVER GET(^45)");
    EXPECT_EQ(form.caption(), L"Update Emergency Room Visit");
    EXPECT_EQ(form.datDepart.value(), L"11/20/2026 23:50");
    EXPECT_EQ(saved(), L"(45^81^U^S^POV^^R^Her aunt^D^^3261120.235^^Stable)");
}

TEST_F(EmergencyVisit, DepartureAgainstAdviceHasItsOwnPiece)
{
    load(L"45^^^^^^^^^AMA|1^^3261120.08^3261120.0915^^\r\n"); // the second wins
    EXPECT_EQ(saved(), L"(45^81^^^^^^^1^^^3261120.0915^)");
    form.optDisch[0].click();
    EXPECT_EQ(saved(), L"(45^81^^^^^^^D^^3261120.0915^^)");
}

TEST_F(EmergencyVisit, UnknownCodesAndUnterminatedLinesAreIgnored)
{
    load(L"45^^^URGENT|u^X|X^by raft^^^^D^on foot^02/30/2026@08:00^^^\r\n45^^^EMERGENT|E");
    EXPECT_EQ(form.opt.chosen() + form.optArrival.chosen() + form.optDisch.chosen(), -3);
    EXPECT_TRUE(form.datDepart.isEmpty());
    EXPECT_EQ(saved(), L"(45^81^^^^^^^^^^^)"); // without the texts of options that are not chosen
}

TEST_F(EmergencyVisit, TextsBelongToTheirOptions)
{
    load(L"45^^^^Other|O^by raft^^^^OTHER|O^walked out^^^^\r\n45^^^^Other|O\r\n"); // an empty text replaces none
    EXPECT_EQ(form.activeControl(), nullptr); // loading moves no focus
    EXPECT_EQ(form.txtOther.text() + L"/" + form.txtDispOth.text(), L"by raft/walked out");
    EXPECT_TRUE(form.txtOther.canBeUsed() && form.txtDispOth.canBeUsed());
    EXPECT_EQ(saved(), L"(45^81^^^O^by raft^^^O^walked out^^^)");
    form.optArrival[3].click();
    form.optDisch[1].click();
    EXPECT_EQ(form.txtOther.text() + form.txtDispOth.text(), L"");
    EXPECT_EQ(saved(), L"(45^81^^^T^^^^A^^^^)");
    EXPECT_FALSE(form.txtOther.canBeUsed() || form.txtDispOth.canBeUsed());
    form.optArrival[6].click();
    EXPECT_EQ(form.activeControl(), &form.txtOther);
    form.txtOther.edit(L"a^b");
    form.txtCond.edit(L"c^d");
    form.txtInformant.edit(L"e^f");
    EXPECT_EQ(saved(), L"(45^81^^^O^a b^^e f^A^^^^c d)");
}

TEST_F(EmergencyVisit, DepartureIsADateWithItsTime)
{
    open();
    for (const TextView text : { L"11/20/2026", L"T", L"soon" }) {
        host.transcript.clear();
        enterDate(form.datDepart, text);
        EXPECT_TRUE(form.datDepart.isEmpty()) << narrow(text);
        EXPECT_BOXES(L"box [Invalid Date] Enter the departure date with its time, such as 1/2/2006 14:30.");
    }
    enterDate(form.datDepart, L"03/14/2026@00:00");
    EXPECT_EQ(form.datDepart.value(), L"03/14/2026 00:00");
    enterDate(form.datDepart, L"N");
    EXPECT_EQ(saved(), L"(^81^^^^^^^^^3260315.093^^)");
    EXPECT_BOXES();
}

TEST_F(EmergencyVisit, TransferOptionFollowsTheFileOfThePlace)
{
    for (const auto& [place, option, end] :
        { std::tuple<TextView, int, TextView> { L"RIVERSIDE HOSPITAL|7;AUTTVNDR(", 0, L"^VEN.`7)" },
            { L"NORTH CLINIC|7;AUTTLOC(", 1, L"^LOC.`7)" }, { L"NORTH CLINIC|7;DIC(", -1, L"^LOC.`7)" } }) {
        frmER own(shared);
        own.m_sIEN = L"45";
        reply(L"MEVVER GET", L"45^^^^^^^^^TRANSFERRED|T^^^^^" + Text(place) + L"\r\n");
        open(own);
        EXPECT_EQ(own.optTransfer.chosen(), option);
        EXPECT_EQ(own.txtLoc.text(), option == 0 ? L"Riverside Hospital" : L"North Clinic");
        own.moveFocus(own.txtLoc); // entering and leaving the field searches nothing
        own.press(own.cmdOK);
        EXPECT_TRUE(host.calls().back().ends_with(end)) << narrow(host.calls().back());
        EXPECT_LINES(L"list MEVUTL");
        own.open();
        own.optDisch[0].click(); // clears the place
        own.press(own.cmdOK);
        EXPECT_TRUE(host.calls().back().ends_with(L"^D^^^^)")) << narrow(host.calls().back());
    }
}

TEST_F(EmergencyVisit, TransferIsLookedUpInTheFileOfItsOption)
{
    open();
    form.optDisch[2].click();
    EXPECT_TRUE(form.txtLoc.canBeUsed() && form.optTransfer[0].canBeUsed());
    reply(L"MEVUTL DICLKUP", L"9^^RIVERSIDE HOSPITAL\r\n");
    typeInto(form.txtLoc, L"river");
    form.moveFocus(form.txtCond);
    EXPECT_EQ(host.calls().back(), L"list MEVUTL DICLKUP(9999999.11^RIVER^^^250^^^^.01)");
    EXPECT_EQ(form.optTransfer.chosen(), 0); // without an option the providers are searched
    EXPECT_TRUE(saved().ends_with(L"^VEN.`9)"));
    form.open();
    form.optTransfer[1].click(); // the number belongs to the other file
    EXPECT_EQ(form.txtLoc.text() + form.txtLoc.tag(), L"");
    typeInto(form.txtLoc, L"north");
    form.moveFocus(form.txtCond);
    EXPECT_EQ(host.calls().back(), L"list MEVUTL DICLKUP(4^NORTH^^^250^^^^.01)");
    reply(L"MEVUTL DICLKUP", L"");
    form.open();
    typeInto(form.txtLoc, L"nowhere");
    form.press(form.cmdOK); // the dialog is closed without a choice: shows the emptied field instead of saving
    EXPECT_TRUE(host.calls().back().starts_with(L"list MEVUTL DICLKUP"));
    EXPECT_EQ(form.txtLoc.text(), L"");
    EXPECT_TRUE(form.isOpen());
    form.optDisch[0].click();
    EXPECT_EQ(form.txtLoc.text() + form.txtLoc.tag(), L"");
    EXPECT_FALSE(form.cmdLoc.canBeUsed());
    EXPECT_TRUE(saved().ends_with(L"^D^^^^)"));
}

}
