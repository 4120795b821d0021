#include "editors/frmElder.h"
#include "editors/frmElderView.h"
#include "tests/support/FormFixture.h"

namespace health::test {

// Items 0 to 13 of one assessment; the first three have more behind the text.
constexpr TextView Stored =
    L"31^^3260310.0915|81^INDEPENDENT|I^needs help|N^TOTALLY DEPENDENT|T^^X^^^^^NEEDS HELP^^^DECLINE^YES\r\n";

using FunctionalStatus = FormFixture<frmElder>;

TEST_F(FunctionalStatus, NewRecordMayBeSavedUntouched)
{
    form.m_sVisit = L"81";
    open();
    EXPECT_EQ(form.caption(), L"Enter Functional Status Record");
    form.press(form.cmdAdd);
    EXPECT_CALLS(L"call MEVVELD SET(^81^^^^^^^^^^^^^^)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(FunctionalStatus, LoadedItemsAreSavedAsTexts)
{
    form.m_sVisit = L"81";
    form.m_sIEN = L"31";
    reply(L"MEVVELD GET", Text(Stored) + L"31\r\n"); // a line without items changes none
    open();
    form.Form_Activate(); // activated again by a box
    EXPECT_EQ(form.caption(), L"Update Functional Status Record");
    EXPECT_EQ(form.cbo[4].listIndex(), -1); // matches no choice
    form.cbo[13].choose(1);
    form.cbo[2].choose(-1); // no choice
    form.press(form.cmdAdd);
    EXPECT_CALLS(
        L"list MEVVELD GET(^31)", L"call MEVVELD SET(31^81^Independent^Needs Help^^^^^^^^Needs Help^^^Decline^No)");
}

class FunctionalStatusView : public FormFixture<frmElderView> {
protected:
    void openOn(TextView record)
    {
        form.m_sVisit = L"81";
        form.m_sIEN = L"31";
        reply(L"MEVVELD GET", record);
        open();
    }
};

TEST_F(FunctionalStatusView, ShowsAllItemsOfEachLine)
{
    openOn(Stored);
    Transcript rows;
    for (int row = 0; row < form.fg.rowCount(); ++row)
        rows.push_back(Text(form.fg.text(row, 0)) + L"=" + Text(form.fg.text(row, 1)));
    EXPECT_EQ(rows,
        (Transcript { L"Visit Date=03/10/2026 09:15", L"Toileting=Independent", L"Bathing=Needs Help",
            L"Dressing=Totally Dependent", L"Transfers=", L"Feeding=X", L"Continence=", L"Finance=", L"Cooking=",
            L"Shopping=", L"Housework=Needs Help", L"Medications=", L"Transportation=", L"Status Change=Decline",
            L"Caregiver=Yes" }));
    EXPECT_CALLS(L"list MEVVELD GET(^31)");
}

TEST_F(FunctionalStatusView, SaysThatTheRecordHasChangedWithoutAComparison)
{
    openOn(Stored);
    shared.notifyRecordsChanged(L"VELD");
    EXPECT_TRUE(form.notice().text.starts_with(L"Changed by another session at "));
    EXPECT_EQ(form.notice().action, L"");
}

TEST_F(FunctionalStatusView, EditNeedsTheKeyAndClosesTheView)
{
    openOn(replies::Functional);
    form.press(form.cmdEdit);
    EXPECT_BOXES(L"box [Insufficient Permissions] Editing not permitted, you do not hold either the PROVIDER key or "
                 L"the MEVZ ELDER CARE EDIT key.");
    EXPECT_EQ(host.desktop.styles, std::vector { 16 });
    EXPECT_TRUE(form.isOpen());

    for (const bool byKey : { true, false }) {
        form.open();
        form.m_bElder = byKey;
        if (!byKey)
            shared.CheckSecurity(L"", L""); // PROVIDER is enough
        host.transcript.clear();
        host.desktop.inForms.push_back([](Form& opened) {
            auto& editor = dynamic_cast<frmElder&>(opened);
            EXPECT_EQ(editor.m_sVisit + L"/" + editor.m_sIEN + editor.cbo[0].text(), L"81/31Independent");
            editor.press(editor.cmdCancel);
        });
        form.press(form.cmdEdit);
        EXPECT_LINES(L"show|closed", L"show frmElder", L"closed frmElder") << byKey;
        EXPECT_FALSE(form.isOpen()); // even if the edit is cancelled
    }
}

}
