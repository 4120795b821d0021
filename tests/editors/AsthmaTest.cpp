#include "editors/frmAsthma.h"
#include "editors/frmAsthmaReg.h"
#include "tests/support/FormFixture.h"

namespace health::test {
namespace {

constexpr TextView Left = L"12^INACTIVE|I^^^^";

class AsthmaRecord : public FormFixture<frmAsthma> {
protected:
    AsthmaRecord()
    {
        form.m_sVisit = L"81";
        form.m_bRegKey = true;
    }

    // What the registry's frame shows: status, button, "E" when it can be edited.
    Text registry()
    {
        return form.lblStatus.caption() + form.cmdActivate.caption() + (form.cmdEditReg.isVisible() ? L"E" : L"");
    }
};

TEST_F(AsthmaRecord, NewRecordSavesWhatIsChosen)
{
    open();
    EXPECT_EQ(form.caption(), L"Add Asthma Record");
    EXPECT_EQ(registry(), L"Not in Registry&Activate");
    form.press(form.cmdAdd);
    EXPECT_EQ(host.calls(), (Transcript { L"call MEVVAST GETREG(12)", L"call MEVVAST SET(^81^^^^^^^^)" }));
    EXPECT_FALSE(form.isOpen());
}

TEST_F(AsthmaRecord, SeverityIsReadAsTextAndSavedAsNumber)
{
    form.m_sIEN = L"45";
    host.session->reply(L"MEVVAST GET",
        L"45^^3260310|81^MILD^93^49.5^420^YES|1^no^^MAYBE\r\n45^^^moderate PERSISTENT|9\r\n45^^^MILD INTERMITTENT|1");
    open();
    form.Form_Activate();
    EXPECT_EQ(form.caption(), L"Update Asthma Record");
    form.moveFocus(form.txt[1]);
    form.press(form.cmdAdd); // loaded values are not judged
    EXPECT_EQ(host.calls(),
        (Transcript {
            L"list MEVVAST GET(^45)", L"call MEVVAST GETREG(12)", L"call MEVVAST SET(45^81^3^93^49.5^420^Yes^No^^)" }));
    EXPECT_FALSE(accepts(form.txt[1], L"49.6")); // edited ones are
}

TEST_F(AsthmaRecord, LungFunctionBounds)
{
    open();
    for (const auto& [box, text] : { std::pair<std::size_t, TextView> { 0, L"0" }, { 0, L"150" }, { 1, L"150" },
             { 2, L"100" }, { 2, L"700" }, { 2, L" 100 " }, { 0, L"" } })
        EXPECT_TRUE(accepts(form.txt[box], text)) << narrow(text);
    EXPECT_TRUE(host.boxes().empty());
    for (const auto& [box, text, message] :
        { std::tuple<std::size_t, TextView, TextView> { 0, L"x", L"Entry must be numeric." },
            { 1, L"12.0", L"Entry must be a whole number." }, { 2, L"99.5", L"Entry must be a whole number." },
            { 2, L"99", L"Entry must be between 100 and 700." }, { 2, L"701", L"Entry must be between 100 and 700." },
            { 0, L"151", L"Entry must be between 0 and 150." }, { 1, L"-1", L"Entry must be between 0 and 150." } }) {
        host.transcript.clear();
        EXPECT_FALSE(accepts(form.txt[box], text)) << narrow(text);
        EXPECT_EQ(host.boxes(), Transcript { L"box [Invalid Entry] " + Text(message) });
    }
}

TEST_F(AsthmaRecord, RegistryIsShownToEverybody)
{
    form.m_bRegKey = false;
    host.session->reply(L"MEVVAST GETREG", L"12^ACTIVE|A^JAN 2,2026|x^04/05/2026^03/20/2026@10:15^SMITH,JOHN|15");
    host.session->reply(L"MEVVAST GETNOTE", L"Spacer checked.\r\nCall back.\r\n");
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
    const Text refusal =
        L"box [Insufficient Permissions] You do not have the necessary security permission to edit the "
        L"asthma registry.";
    EXPECT_EQ(host.boxes(), (Transcript { refusal, refusal }));
    EXPECT_TRUE(host.calls().empty());
}

TEST_F(AsthmaRecord, ActivationOpensTheRegistrysEditor)
{
    host.session->reply(L"MEVVAST GETREG", Left);
    open();
    EXPECT_EQ(registry(), L"Inactive&Activate");
    host.transcript.clear();
    form.press(form.cmdActivate); // No is the default
    EXPECT_EQ(host.lines({ L"box", L"call", L"list", L"show" }),
        Transcript { L"box [Please Confirm] Are you sure you want to activate this patient in the asthma registry?" });
    host.transcript.clear();
    host.desktop.answers = { BoxAnswer::Yes };
    host.desktop.inForms.push_back([&](Form& opened) {
        EXPECT_EQ(registry(), L"Inactive&Activate"); // follows when the editor is closed
        host.session->reply(L"MEVVAST GETREG", replies::Registered);
        auto& editor = dynamic_cast<frmAsthmaReg&>(opened);
        editor.press(editor.cmdAdd);
    });
    form.press(form.cmdActivate);
    EXPECT_EQ(host.lines({ L"call", L"list", L"show", L"closed" }),
        (Transcript { L"call MEVVAST SETREG(12^A)", L"show frmAsthmaReg", L"call MEVVAST GETREG(12)",
            L"list MEVVAST GETNOTE(12)", L"call MEVVAST SETREG(12^A^^^^^)", L"closed frmAsthmaReg",
            L"call MEVVAST GETREG(12)", L"list MEVVAST GETNOTE(12)" }));
    EXPECT_EQ(registry(), L"Active&InactivateE");
}

TEST_F(AsthmaRecord, InactivationOpensNoEditorAndAFailureChangesNothing)
{
    host.session->reply(L"MEVVAST GETREG", replies::Registered);
    host.session->reply(L"MEVVAST SETREG", L"12^I", L"-1^You may not change the asthma registry.");
    open();
    host.desktop.answers = { BoxAnswer::Yes, BoxAnswer::Ok, BoxAnswer::Yes };
    // The question is about the patient of the form, whomever the host selects meanwhile.
    host.desktop.whileBoxIsOpen = [this] { host.patient->patientNumber = 34; };
    form.press(form.cmdActivate);
    EXPECT_EQ(registry(), L"Active&InactivateE");
    EXPECT_EQ(host.calls().back(), L"call MEVVAST SETREG(12^I)"); // the refusal ends it
    EXPECT_EQ(host.boxes().front(),
        L"box [Please Confirm] Are you sure you want to inactivate this patient in the asthma registry?");
    host.transcript.clear();
    host.session->reply(L"MEVVAST SETREG", L"12^I", L"1");
    host.session->reply(L"MEVVAST GETREG", L"-1^The registry is being rebuilt.");
    form.press(form.cmdActivate);
    EXPECT_TRUE(host.lines({ L"show" }).empty());
    EXPECT_EQ(form.lblStatus.caption() + form.cmdActivate.caption(), L"Inactive&Activate"); // though the refresh failed
    EXPECT_EQ(form.fg.rowCount(), 0);
}

TEST_F(AsthmaRecord, EditedRegistryIsShownAndTheVisitsReport)
{
    host.session->reply(L"MEVVAST GETREG", replies::Registered);
    host.session->reply(L"MEVUTL GETRPT", L"Visit\r\n");
    open();
    host.desktop.inForms.push_back([&](Form&) { host.session->reply(L"MEVVAST GETREG", Left); });
    form.press(form.cmdEditReg);
    EXPECT_EQ(registry(), L"Inactive&Activate");
    form.press(form.cmdHS);
    EXPECT_EQ(host.calls().back(), L"list MEVUTL GETRPT(81)");
}

TEST_F(AsthmaRecord, RegistryFrameIsPartOfTheTallerFormOnly)
{
    const auto parts = [&] { return form.arrangement().children.size(); };
    form.setHeight(frmAsthma::PlainHeight);
    const auto plain = parts();
    form.setHeight(frmAsthma::RegistryHeight);
    EXPECT_EQ(parts(), plain + 1);
}

class AsthmaRegistry : public FormFixture<frmAsthmaReg> {
protected:
    void openOn(TextView reply, TextView note)
    {
        host.session->reply(L"MEVVAST GETREG", reply);
        host.session->reply(L"MEVVAST GETNOTE", note);
        open();
    }
};

TEST_F(AsthmaRegistry, LoadsAllButTheManagersNumber)
{
    // The server's mark before a text that begins like a refusal is no part of it.
    openOn(L"12^INACTIVE|I^3260102|x^02/30/2026^03/20/2026@10:15^SMITH,JOHN|15", L"\u2060-5 kg\r\nchecked.\r\n");
    EXPECT_EQ(form.lblStatus.caption() + form.cmdActivate.caption(), L"Inactive&Activate");
    EXPECT_EQ(
        form.dat[0].value() + L"/" + form.dat[1].value() + L"/" + form.dat[2].value(), L"01/02/2026//03/20/2026 10:15");
    EXPECT_EQ(form.txtPrv.text() + L"|" + form.txtPrv.tag(), L"Smith, John|");
    EXPECT_EQ(form.txtComments.text(), L"-5 kg checked.");
    form.txtComments.edit(L"a^b^\r\nc");
    form.press(form.cmdAdd);
    // Active, whatever the status was; without a manager, who was not looked up here.
    EXPECT_EQ(host.calls().back(), L"call MEVVAST SETREG(12^A^01/02/2026^^03/20/2026 10:15^^a b \r\nc)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(AsthmaRegistry, LeavingTheManagerLooksTheNameUp)
{
    openOn(L"12^ACTIVE|A^^^^SMITH,JOHN|15", L"");
    EXPECT_EQ(form.cmdActivate.caption(), L"&Inactivate");
    host.session->reply(L"MEVUTL DICLKUP", L"15^^SMITH,JOHN\r\n");
    form.moveFocus(form.txtPrv);
    form.moveFocus(form.txtComments);
    EXPECT_EQ(form.txtPrv.text() + L"|" + form.txtPrv.tag(), L"SMITH,JOHN|15");
    host.session->reply(L"MEVUTL DICLKUP", L"");
    typeInto(form.txtPrv, L"SMYTH");
    form.moveFocus(form.txtComments); // the dialog is closed without a choice
    EXPECT_EQ(form.txtPrv.text() + L"|" + form.txtPrv.tag(), L"|");
}

TEST_F(AsthmaRegistry, ActivatesByItsCaption)
{
    openOn(L"-1^Unknown.", L"-1^");
    EXPECT_EQ(form.lblStatus.caption() + form.cmdActivate.caption(), L"Not in Registry&Activate");
    EXPECT_EQ(form.txtComments.text(), L"");
    host.transcript.clear();
    host.desktop.answers = { BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::No };
    form.press(form.cmdActivate);
    EXPECT_EQ(form.lblStatus.caption() + form.cmdActivate.caption(), L"Active&Inactivate");
    form.press(form.cmdActivate);
    EXPECT_EQ(form.lblStatus.caption() + form.cmdActivate.caption(), L"Inactive&Activate");
    form.press(form.cmdActivate);
    EXPECT_EQ(host.lines({ L"box", L"call" }),
        (Transcript { L"box [Please Confirm] Are you sure you want to Activate this patient in the asthma registry?",
            L"call MEVVAST SETREG(12^A)",
            L"box [Please Confirm] Are you sure you want to Inactivate this patient in the asthma registry?",
            L"call MEVVAST SETREG(12^I)",
            L"box [Please Confirm] Are you sure you want to Activate this patient in the asthma registry?" }));
    host.session->reply(L"MEVVAST SETREG", L"-1^Not today.");
    host.desktop.answers = { BoxAnswer::Yes };
    form.press(form.cmdActivate);
    EXPECT_EQ(form.lblStatus.caption() + form.cmdActivate.caption(), L"Inactive&Activate");
}

TEST_F(AsthmaRegistry, BadDateIsToldAndStaysAndKeysAreFiltered)
{
    openOn(L"", L"");
    for (const TextView stands : { L"N", L"1/1/1800", L"12/31/2699" })
        enterDate(form.dat[2], stands);
    EXPECT_TRUE(host.boxes().empty());
    for (const TextView outside : { L"12/31/1799", L"1/5/3026" }) {
        host.transcript.clear();
        enterDate(form.dat[2], outside);
        EXPECT_EQ(host.boxes(), Transcript { L"box [Invalid Date] Dates lie between the years 1800 and 2699." });
    }
    host.transcript.clear();
    enterDate(form.dat[2], L"soon");
    EXPECT_EQ(host.boxes(), Transcript { L"box [Invalid Date] Not a valid date format" });
    EXPECT_EQ(form.dat[2].value(), L"soon");
    int window = 0;
    form.txtComments.setWindow(&window);
    int key = L'V';
    form.txtComments.pressKeyDown(key, 2);
    EXPECT_EQ(key, 0);
    ASSERT_EQ(host.desktop.editMessages.size(), 1u);
    EXPECT_EQ(host.desktop.editMessages[0].edit, &window);
}

}
}
