#include "editors/frmAsthma.h"
#include "editors/frmAsthmaReg.h"
#include "tests/support/FormFixture.h"

namespace health::test {

constexpr TextView Inactive = L"12^INACTIVE|I^^^^";

class AsthmaRecord : public FormFixture<frmAsthma> {
protected:
    AsthmaRecord()
    {
        form.m_sVisit = L"81";
        form.m_bRegKey = true;
    }

    // The registry's frame: status, button, "E" when it can be edited.
    Text registry()
    {
        return form.lblStatus.caption() + form.cmdActivate.caption() + (form.cmdEditReg.isVisible() ? L"E" : L"");
    }
};

TEST_F(AsthmaRecord, NewRecordSavesItsVisit)
{
    open();
    EXPECT_EQ(form.caption(), L"Add Asthma Record");
    EXPECT_EQ(registry(), L"Not in Registry&Activate");
    form.press(form.cmdAdd);
    EXPECT_CALLS(L"call MEVVAST GETREG(12)", L"call MEVVAST SET(^81^^^^^^^^)");
    EXPECT_FALSE(form.isOpen());
    form.setHeight(frmAsthma::PlainHeight); // without the registry's frame
    const auto parts = form.arrangement().children.size();
    form.setHeight(frmAsthma::RegistryHeight);
    EXPECT_EQ(form.arrangement().children.size(), parts + 2); // with a line above it
}

TEST_F(AsthmaRecord, SeverityIsReadAsTextAndSavedAsNumber)
{
    form.m_sIEN = L"45";
    reply(L"MEVVAST GET",
        L"45^^3260310|81^MILD^93^49.5^420^YES|1^no^^MAYBE\r\n45^^^moderate PERSISTENT|9\r\n45^^^MILD INTERMITTENT|1");
    open();
    form.Form_Activate();
    EXPECT_EQ(form.caption(), L"Update Asthma Record");
    form.moveFocus(form.txt[1]);
    form.press(form.cmdAdd); // loaded values are not validated
    EXPECT_CALLS(
        L"list MEVVAST GET(^45)", L"call MEVVAST GETREG(12)", L"call MEVVAST SET(45^81^3^93^49.5^420^Yes^No^^)");
    EXPECT_FALSE(accepts(form.txt[1], L"49.6")); // edited values are
}

TEST_F(AsthmaRecord, LungFunctionBounds)
{
    open();
    for (const auto& [box, text, message] : { std::tuple<std::size_t, TextView, TextView> { 0, L"0", L"" },
             { 1, L"150", L"" }, { 2, L"100", L"" }, { 2, L"700", L"" }, { 2, L" 100 ", L"" }, { 0, L"", L"" },
             { 0, L"x", L"numeric." }, { 1, L"12.0", L"a whole number." }, { 2, L"99.5", L"a whole number." },
             { 2, L"99", L"between 100 and 700." }, { 2, L"701", L"between 100 and 700." },
             { 0, L"151", L"between 0 and 150." }, { 1, L"-1", L"between 0 and 150." } }) {
        host.transcript.clear();
        EXPECT_EQ(accepts(form.txt[box], text), message.empty()) << narrow(text);
        EXPECT_EQ(host.boxes(),
            message.empty() ? Transcript {} : Transcript { L"box [Invalid Entry] Entry must be " + Text(message) });
    }
}

TEST_F(AsthmaRecord, EveryUserSeesTheRegistryButOnlyItsKeyHoldersEditIt)
{
    form.m_bRegKey = false;
    reply(L"MEVVAST GETREG", L"12^ACTIVE|A^JAN 2,2026|x^04/05/2026^03/20/2026@10:15^SMITH,JOHN|15");
    reply(L"MEVVAST GETNOTE", L"Spacer checked.\r\nCall back.\r\n");
    open();
    EXPECT_EQ(registry(), L"Active&InactivateE");
    Transcript rows;
    for (int row = 0; row < form.fg.rowCount(); ++row)
        rows.push_back(Text(form.fg.text(row, 0)) + L"=" + Text(form.fg.text(row, 1)));
    EXPECT_EQ(rows,
        (Transcript { L"Last Asthma Visit=JAN 2,2026", L"Calculated Date Due=04/05/2026",
            L"Next Appointment=03/20/2026@10:15", L"Case Manager=Smith, John",
            L"Comments=Spacer checked.\r\nCall back." }));
    host.transcript.clear();
    form.press(form.cmdActivate);
    form.press(form.cmdEditReg);
    const Text refusal = L"box [Insufficient Permissions] You do not have the necessary security permission to edit "
                         L"the asthma registry.";
    EXPECT_BOXES(refusal, refusal);
    EXPECT_TRUE(host.calls().empty());
}

TEST_F(AsthmaRecord, ActivationOpensTheRegistryEditor)
{
    reply(L"MEVVAST GETREG", Inactive);
    open();
    EXPECT_EQ(registry(), L"Inactive&Activate");
    host.transcript.clear();
    form.press(form.cmdActivate); // answered No, the default
    EXPECT_LINES(L"box|call|list|show",
        L"box [Please Confirm] Are you sure you want to activate this patient in the asthma registry?");
    host.desktop.answers = { BoxAnswer::Yes };
    host.desktop.inForms.push_back([&](Form& opened) {
        reply(L"MEVVAST GETREG", replies::Registered);
        auto& editor = dynamic_cast<frmAsthmaReg&>(opened);
        editor.press(editor.cmdAdd);
    });
    form.press(form.cmdActivate);
    EXPECT_LINES(L"call|list|show|closed", L"call MEVVAST SETREG(12^A)", L"show frmAsthmaReg",
        L"call MEVVAST GETREG(12)", L"list MEVVAST GETNOTE(12)", L"call MEVVAST SETREG(12^A^^^^^)",
        L"closed frmAsthmaReg", L"call MEVVAST GETREG(12)", L"list MEVVAST GETNOTE(12)");
    EXPECT_EQ(registry(), L"Active&InactivateE");
    EXPECT_EQ(shared.registryDue(L"12"), pieceView(replies::Registered, L"^", 4));
    EXPECT_EQ(shared.registryDue(L"13"), L"");
    host.desktop.inForms.push_back([&](Form&) { reply(L"MEVVAST GETREG", Inactive); });
    form.press(form.cmdEditReg);
    EXPECT_EQ(registry(), L"Inactive&Activate");
    EXPECT_EQ(shared.registryDue(L"12"), L""); // an inactive entry is not due
    form.press(form.cmdHS);
    EXPECT_EQ(host.calls().back(), L"list MEVUTL GETRPT(81)");
}

TEST_F(AsthmaRecord, InactivationOpensNoEditorAndAFailureChangesNothing)
{
    reply(L"MEVVAST GETREG", replies::Registered);
    host.session->reply(L"MEVVAST SETREG", L"12^I", L"-1^You may not change the asthma registry.");
    open();
    host.desktop.answers = { BoxAnswer::Yes, BoxAnswer::Ok, BoxAnswer::Yes };
    form.press(form.cmdActivate);
    EXPECT_EQ(registry(), L"Active&InactivateE");
    EXPECT_EQ(host.calls().back(), L"call MEVVAST SETREG(12^I)");
    EXPECT_EQ(host.boxes().front(),
        L"box [Please Confirm] Are you sure you want to inactivate this patient in the asthma registry?");
    host.session->reply(L"MEVVAST SETREG", L"12^I", L"1");
    reply(L"MEVVAST GETREG", L"-1^The registry is being rebuilt.");
    form.press(form.cmdActivate);
    EXPECT_TRUE(host.lines(L"show").empty());
    EXPECT_EQ(registry(), L"Inactive&Activate"); // despite the failed reload; "&Edit" is hidden
    EXPECT_EQ(form.fg.rowCount(), 0);
}

class AsthmaRegistry : public FormFixture<frmAsthmaReg> {
protected:
    void openOn(TextView registry, TextView note)
    {
        reply(L"MEVVAST GETREG", registry);
        reply(L"MEVVAST GETNOTE", note);
        open();
    }
    Text status() { return form.lblStatus.caption() + form.cmdActivate.caption(); }
};

TEST_F(AsthmaRegistry, LoadsAllButTheManagersNumber)
{
    // The server's mark before a text that looks like an error reply is removed.
    openOn(L"12^INACTIVE|I^3260102|x^02/30/2026^03/20/2026@10:15^SMITH,JOHN|15", L"\u2060-5 kg\r\nchecked.\r\n");
    EXPECT_EQ(status(), L"Inactive&Activate");
    EXPECT_EQ(form.txtPrv.text() + L"|" + form.txtPrv.tag(), L"Smith, John|");
    EXPECT_EQ(form.txtComments.text(), L"-5 kg checked.");
    form.txtComments.edit(L"a^b^\r\nc");
    form.press(form.cmdAdd);
    // Always active; without the manager, who was not looked up here.
    EXPECT_EQ(host.calls().back(), L"call MEVVAST SETREG(12^A^01/02/2026^^03/20/2026 10:15^^a b \r\nc)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(AsthmaRegistry, StatusChangesAfterConfirmation)
{
    openOn(L"-1^Unknown.", L"-1^");
    EXPECT_EQ(status() + form.txtComments.text(), L"Not in Registry&Activate");
    host.desktop.answers = { BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Yes };
    for (const TextView now : { L"Active&Inactivate", L"Inactive&Activate", L"Inactive&Activate" }) {
        form.press(form.cmdActivate);
        EXPECT_EQ(status(), now);
    }
    reply(L"MEVVAST SETREG", L"-1");
    form.press(form.cmdActivate);
    EXPECT_EQ(status(), L"Inactive&Activate");
    const auto question = [](const Text& action) {
        return L"box [Please Confirm] Are you sure you want to " + action + L" this patient in the asthma registry?";
    };
    EXPECT_LINES(L"box [Please|call MEVVAST S", question(L"Activate"), L"call MEVVAST SETREG(12^A)",
        question(L"Inactivate"), L"call MEVVAST SETREG(12^I)", question(L"Activate"), question(L"Activate"),
        L"call MEVVAST SETREG(12^A)");
}

TEST_F(AsthmaRegistry, InvalidDateIsReportedAndKept)
{
    openOn(L"", L"");
    constexpr TextView Range = L"Dates lie between the years 1800 and 2699.";
    for (const auto& [date, message] :
        { std::pair<TextView, TextView> { L"N", L"" }, { L"1/1/1800", L"" }, { L"12/31/2699", L"" },
            { L"12/31/1799", Range }, { L"1/1/2700", Range }, { L"soon", L"Not a valid date format" } }) {
        host.transcript.clear();
        enterDate(form.dat[2], date);
        EXPECT_EQ(host.boxes(), message.empty() ? Transcript {} : Transcript { L"box [Invalid Date] " + Text(message) })
            << narrow(date);
    }
    EXPECT_EQ(form.dat[2].value(), L"soon");
    form.dat[2].setClock([this] { return host.desktop.today; });
    for (const auto& [date, isSaved] : { std::pair<TextView, bool> { L"later", false }, { L"1/5/2026", true } }) {
        form.moveFocus(form.dat[2]);
        form.dat[2].type(date);
        form.press(form.cmdAdd);
        EXPECT_EQ(!form.isOpen(), isSaved) << narrow(date);
    }
}

TEST_F(AsthmaRegistry, PastingGoesToTheCommentsByAMessage)
{
    int window = 0;
    form.txtComments.setWindow(&window);
    int key = L'V';
    form.txtComments.pressKeyDown(key, 2); // Ctrl+V
    EXPECT_EQ(key, 0);
    EXPECT_LINES(L"edit", L"edit 770 0 0");
    EXPECT_EQ(host.desktop.lastEdited, &window);
}

}
