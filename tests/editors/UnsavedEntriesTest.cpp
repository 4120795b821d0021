// What becomes of entries that are not saved, and of forms whose patient or record changes meanwhile.
#include "editors/frmCompare.h"
#include "tests/support/Editors.h"
#include "tests/support/FormFixture.h"

namespace health::test {

namespace {

Text textsOf(const Grid& grid, int row)
{
    Text texts;
    for (int column = 0; column < grid.columnCount(); ++column)
        texts += (column == 0 ? L"" : L"|") + Text(grid.text(row, column));
    return texts;
}

class UnsavedContract : public FormFixture<frmTxc> {
protected:
    UnsavedContract()
    {
        form.m_sIEN = L"7";
        form.m_sVisit = L"81";
        reply(L"MEVVTXC GET", L"7^^03/10/2026@09:30|81^PAIN|P^03/10/2026^OAKHURST,KATHERINE J|15\r\n");
        reply(L"MEVVTXC SET", L"1");
    }

    // The next form compares the entry with a change of the date by another session.
    void expectComparison()
    {
        host.desktop.inForms.push_back([&](Form& opened) {
            const Grid& rows = dynamic_cast<frmCompare&>(opened).fg;
            ASSERT_EQ(rows.rowCount(), 2);
            EXPECT_EQ(textsOf(rows, 0), L"Update Treatment Contract|Pain|Pain|Mental Health");
            EXPECT_EQ(textsOf(rows, 1), L"Date Initiated|03/10/2026|03/12/2026|03/10/2026");
        });
    }

    // The entry of the form that opens next.
    void expectReopened(TextView type, TextView date, TextView provider)
    {
        host.desktop.inForms.push_back([=](Form& opened) {
            auto& reopened = dynamic_cast<frmTxc&>(opened);
            EXPECT_EQ(reopened.opt[0].isChosen() ? L"Pain" : L"Mental Health", type);
            EXPECT_EQ(reopened.datInit.shown(), date);
            EXPECT_EQ(reopened.txtPrv.text() + L"|" + reopened.txtPrv.tag(), provider);
            reopened.moveFocus(reopened.txtPrv);
            reopened.moveFocus(reopened.datInit); // the provider is still a picked one
            reopened.press(reopened.cmdAdd);
        });
        shared.reopenEntry();
        EXPECT_TRUE(host.desktop.inForms.empty());
    }
};

TEST_F(UnsavedContract, IsKeptByCancelAndSavedLater)
{
    open();
    form.opt[1].click();
    form.moveFocus(form.datInit);
    form.datInit.type(L"not yet a da");
    form.press(form.cmdCancel);
    EXPECT_FALSE(form.isOpen());
    EXPECT_LINES(L"event ", L"event DISCARDED Entry discarded: Update Treatment Contract");
    EXPECT_BOXES();
    host.transcript.clear();
    host.desktop.inForms.push_back([&](Form& opened) {
        auto& reopened = dynamic_cast<frmTxc&>(opened);
        EXPECT_TRUE(reopened.opt[1].isChosen());
        EXPECT_EQ(reopened.datInit.shown(), L"not yet a da");
        EXPECT_EQ(reopened.datInit.value(), L"03/10/2026");
        reopened.moveFocus(reopened.datInit);
        reopened.datInit.enter(L"3/11/2026", host.desktop.today);
        reopened.press(reopened.cmdAdd);
    });
    shared.reopenEntry();
    EXPECT_LINES(L"event |call ", L"event DISCARDED ", L"call MEVVTXC SET(7^81^M^03/11/2026^15)",
        L"event SAVED Tx Contract 03/10/2026 09:30");
    shared.reopenEntry(); // nothing is left
    EXPECT_EQ(host.lines(L"show").size(), 1U);
}

TEST_F(UnsavedContract, WithoutAnEntryIsNotOffered)
{
    open();
    form.moveFocus(form.datInit);
    form.datInit.type(L"3/1/2026");
    form.datInit.type(L"03/10/2026");
    form.press(form.cmdCancel);
    frmTxc unread(shared); // cancelled while it reads its record
    unread.open();
    unread.press(unread.cmdCancel);
    frmInf feeding(shared);
    feeding.open();
    feeding.Form_Activate();
    feeding.lstINF.setListIndex(2); // only current, not checked
    feeding.press(feeding.cmdCancel);
    EXPECT_LINES(L"event ");
}

TEST_F(UnsavedContract, IsSavedOnceHoweverOftenTheUserPresses)
{
    open();
    form.opt[1].click();
    bool isBusy = false;
    host.session->duringCalls = [&] { // a host may let input through
        isBusy = form.cmdAdd.isBusy();
        for (int press = 0; press < 20; ++press) {
            form.press(form.cmdAdd);
            form.press(form.cmdCancel);
        }
    };
    reply(L"MEVVTXC SET", L"-1^The contract cannot begin in the future.");
    form.press(form.cmdAdd);
    EXPECT_TRUE(isBusy);
    EXPECT_FALSE(form.cmdAdd.isBusy());
    EXPECT_TRUE(form.isOpen()); // refused: the user can correct the entry
    EXPECT_EQ(form.activeControl(), &form.datInit);
    EXPECT_EQ(form.datInit.fault(), L"The contract cannot begin in the future.");
    EXPECT_LINES(L"call |event ", L"call MEVVTXC SET(7^81^M^03/10/2026^15)");
    reply(L"MEVVTXC SET", L"1");
    form.press(form.cmdAdd);
    EXPECT_LINES(L"call ", L"call MEVVTXC SET(7^81^M^03/10/2026^15)", L"call MEVVTXC SET(7^81^M^03/10/2026^15)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(UnsavedContract, IsKeptWhenItsSaveIsLost)
{
    open();
    form.opt[1].click();
    host.session->losesServerAt = L"MEVVTXC SET";
    form.press(form.cmdAdd);
    host.session->losesServerAt.clear();
    EXPECT_FALSE(form.isOpen());
    EXPECT_LINES(L"event ", L"event DISCARDED Entry not saved: Update Treatment Contract");
    expectReopened(L"Mental Health", L"03/10/2026", L"OAKHURST,KATHERINE J|15");
    EXPECT_EQ(host.calls().back(), L"call MEVVTXC SET(7^81^M^03/10/2026^15)");
}

TEST_F(UnsavedContract, WarnsIfALostSaveMayHaveAddedTheRecord)
{
    form.m_sIEN.clear();
    open();
    form.opt[1].click();
    host.session->losesServerAt = L"MEVVTXC SET";
    form.press(form.cmdAdd);
    host.session->losesServerAt.clear();
    const auto reopened = [&] {
        FormNotice notice;
        host.desktop.inForms.push_back([&](Form& opened) {
            notice = opened.notice();
            opened.press(*opened.cancelButton());
        });
        shared.reopenEntry();
        return notice;
    };
    EXPECT_TRUE(reopened().text.starts_with(L"The record may have been added already"));
    EXPECT_FALSE(reopened().text.empty()); // also after Cancel
    EXPECT_TRUE(reopened().action.empty()); // there is nothing to compare with
}

TEST_F(UnsavedContract, EndsWithTheNextPatient)
{
    open();
    form.opt[1].click();
    form.press(form.cmdCancel);
    shared.forgetEntries();
    EXPECT_EQ(host.transcript.back(), L"event DISCARDED ");
    shared.reopenEntry();
    EXPECT_LINES(L"show");
    form.open();
    host.patient->patientNumber = 34;
    host.transcript.clear();
    form.press(form.cmdCancel); // of the former patient
    EXPECT_LINES(L"event ");
}

TEST_F(UnsavedContract, IsNotSavedForAnotherPatient)
{
    open();
    host.transcript.clear();
    host.patient->patientNumber = 34;
    form.press(form.cmdAdd); // before the host has announced the change
    EXPECT_FALSE(form.cmdAdd.canBeUsed());
    EXPECT_EQ(form.heading().warning, L"Another patient is selected now: nothing can be saved here.");
    shared.notifyPatientChanged();
    form.press(form.cmdAdd);
    EXPECT_CALLS();
    EXPECT_TRUE(form.isOpen());
    host.patient->patientNumber = 12;
    shared.notifyPatientChanged();
    EXPECT_TRUE(form.heading().warning.empty());
    form.press(form.cmdAdd);
    EXPECT_CALLS(L"call MEVVTXC SET(7^81^P^03/10/2026^15)");
}

TEST_F(UnsavedContract, IsComparedWithTheChangeOfAnotherSession)
{
    open();
    form.opt[1].click();
    frmTxc added(shared); // has no record yet
    open(added);
    struct : FormObserver {
        int news = 0;
        void captionChanged(Form&) override { }
        void focusMoved(Form&) override { }
        void focusSettled(Form&) override { }
        void defaultChanged(Form&) override { }
        void textsChanged(Form&) override { ++news; }
        void closed(Form&) override { }
    } frontEnd;
    form.setObserver(&frontEnd);
    shared.notifyRecordsChanged(L"VAST"); // another kind of record
    EXPECT_TRUE(form.notice().text.empty());
    host.transcript.clear();
    shared.notifyRecordsChanged(L"VTXC");
    EXPECT_EQ(form.notice().text, L"Changed by another session at 09:30");
    EXPECT_TRUE(added.notice().text.empty());
    EXPECT_EQ(frontEnd.news, 1);
    EXPECT_CALLS(); // read only on request
    host.session->losesServerAt = L"MEVVTXC GET"; // a failed read is not compared
    form.followNotice();
    EXPECT_EQ(form.notice().action, L"Compare");
    EXPECT_LINES(L"show ");
    host.session->losesServerAt.clear();
    host.transcript.clear();
    reply(L"MEVVTXC GET", L"7^^03/10/2026@09:30|81^PAIN|P^03/12/2026^OAKHURST,KATHERINE J|15\r\n");
    expectComparison();
    form.followNotice();
    EXPECT_CALLS(L"list MEVVTXC GET(^7)");
    EXPECT_EQ(form.notice().text, L"OK replaces what the other session has saved");
    EXPECT_EQ(frontEnd.news, 2);
    EXPECT_TRUE(form.opt[1].isChosen()); // the entry stays
}

TEST_F(UnsavedContract, SaysThatTheRecordHasChangedInBetween)
{
    open();
    form.opt[1].click();
    form.press(form.cmdCancel);
    reply(L"MEVVTXC GET", L"7^^03/10/2026@09:30|81^PAIN|P^03/12/2026^OAKHURST,KATHERINE J|15\r\n");
    host.desktop.inForms.push_back([&](Form& opened) {
        EXPECT_EQ(opened.notice().text, L"The record has changed since this entry was made");
        opened.followNotice();
        EXPECT_EQ(opened.notice().text, L"OK replaces what the other session has saved");
    });
    expectComparison();
    shared.reopenEntry();
    EXPECT_TRUE(host.desktop.inForms.empty());
}

TEST_F(UnsavedContract, IsNotComparedWithAnotherPatientsRecord)
{
    open();
    shared.notifyRecordsChanged(L"VTXC");
    host.patient->patientNumber = 34;
    shared.notifyPatientChanged();
    host.transcript.clear();
    EXPECT_TRUE(form.notice().text.empty());
    form.followNotice();
    EXPECT_LINES(L"list |show ");
}

TEST(EntryTexts, AreNamedByLabelsFramesAndOptions)
{
    ScriptedHost host;
    modShared shared(host.desktop);
    const auto textsOf = [](Form& form) {
        Text texts;
        for (const EntryText& entry : entryTexts(form))
            texts += entry.caption + L"=" + entry.text + L";";
        return texts;
    };
    frmER visit(shared);
    visit.optArrival[6].setChosen(true);
    visit.txtOther.setText(L"by raft");
    EXPECT_TRUE(textsOf(visit).starts_with(
        L"Urgency=;Entered By=;Means of Arrival=Other:;Other:=by raft;Informant=;Notified=;Disposition of Care=;"));
    frmInf feeding(shared);
    feeding.lstINF.setChecked(0, true);
    EXPECT_EQ(textsOf(feeding), L"Infant Feeding Choice=" + feeding.lstINF.itemText(0) + L";");
    frmRefusal refusal(shared);
    EXPECT_EQ(textsOf(refusal), L"Refusal Type=;Refusal Item=;Date Refused=;Comment=;");
}

// Every entry of a form survives Cancel and Undo, with what depends on it: OK then saves what it would have saved.
class EveryUnsavedEntry : public testing::Test {
protected:
    EveryUnsavedEntry()
    {
        shared.InitObjects(host, false);
        host.patient->patientNumber = 12;
        host.session->reply(L"MEVUTL DICLKUP", L"7^^WT^WEIGHT\r\n");
        host.session->reply(L"MEVREF REFLIST", L"9");
    }

    template<typename Editor>
    void expectSameSave(const std::function<void(Editor&)>& enter, Button Editor::*save, TextView record = {})
    {
        const auto calls = [&](Button Editor::*button) {
            Editor form(shared);
            if constexpr (requires { form.m_sIEN; })
                form.m_sIEN = record;
            form.load();
            form.open();
            form.Form_Activate();
            enter(form);
            host.transcript.clear();
            form.press(form.*button);
            return host.calls();
        };
        const Transcript expected = calls(save);
        EXPECT_FALSE(expected.empty());
        EXPECT_TRUE(calls(&EditorForm::cmdCancel).empty());
        host.desktop.inForms.push_back([&](Form& form) {
            host.transcript.clear(); // the form has read its record
            form.press(dynamic_cast<Editor&>(form).*save);
        });
        shared.reopenEntry();
        EXPECT_EQ(host.calls(), expected);
        EXPECT_FALSE(host.lines(L"event SAVED").back().ends_with(L' ')); // "event SAVED Asthma Registry"
    }

    static void typeDate(Form& form, mevZvDate& date, TextView text)
    {
        form.moveFocus(date);
        date.type(text);
    }

    ScriptedHost host;
    modShared shared { host.desktop };
};

TEST_F(EveryUnsavedEntry, IsSavedAfterUndo)
{
    expectSameSave<frmRepHist>(
        [](frmRepHist& form) {
            form.txNumRH[0].type(L"3");
            form.udNumRH[1].step(1);
            form.cboFP.choose(3);
            form.chkPregnant.click();
            form.cboEstMethod.choose(2);
            typeDate(form, form.datDelivery, L"T+90");
        },
        &frmRepHist::cmdAdd);
    expectSameSave<frmPediatric>(
        [](frmPediatric& form) {
            form.moveFocus(form.txt[0]);
            form.txt[0].type(L"g"); // switches the unit
            form.txt[0].edit(L"3200");
            form.moveFocus(form.txt[2]);
            form.txt[2].type(L"6m");
            form.moveFocus(form.txtPat);
            form.txtPat.type(L"wt");
            form.moveFocus(form.txt[1]);
        },
        &frmPediatric::cmdAdd);
    host.session->reply(L"MEVVIF GET", replies::Feeding); // with another choice
    expectSameSave<frmInf>([](frmInf& form) { form.lstINF.click(0); }, &frmInf::cmdAdd, L"45");
    expectSameSave<frmElder>(
        [](frmElder& form) {
            form.cbo[3].choose(1);
            form.cbo[12].choose(2);
        },
        &frmElder::cmdAdd);
    expectSameSave<frmAsthma>(
        [](frmAsthma& form) {
            form.cboSeverity.choose(2);
            form.txt[1].type(L"120");
            form.cbo[0].choose(0);
        },
        &frmAsthma::cmdAdd);
    expectSameSave<frmAsthmaReg>(
        [](frmAsthmaReg& form) {
            typeDate(form, form.dat[2], L"T+3W");
            form.txtPrv.edit(L"wt");
            form.moveFocus(form.txtPrv);
            form.moveFocus(form.txtComments);
            form.txtComments.edit(L"Call first\r\nthen come");
        },
        &frmAsthmaReg::cmdAdd);
    EXPECT_EQ(shared.lastSaved().kind, L""); // the list has no row for it
    expectSameSave<frmRefusal>(
        [](frmRefusal& form) {
            form.lstRefusals.click(5);
            form.moveFocus(form.txtItem);
            form.txtItem.type(L"wt");
            form.moveFocus(form.txtRefComment);
            form.txtRefComment.edit(L"Not today");
        },
        &frmRefusal::cmdOK);
    expectSameSave<frmER>(
        [](frmER& form) {
            form.opt[1].click();
            form.optArrival[6].click();
            form.txtOther.type(L"Horse");
            form.optDisch[2].click();
            form.optTransfer[1].click();
            form.moveFocus(form.txtLoc);
            form.txtLoc.type(L"wt");
            form.moveFocus(form.txtCond);
            form.txtCond.type(L"Stable");
            typeDate(form, form.datDepart, L"3/14/2026 22:45");
        },
        &frmER::cmdOK);
}

}

}
