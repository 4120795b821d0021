// The editors on the real server: the next form shows what the last one saved.
#include "editors/frmAsthma.h"
#include "editors/frmAsthmaReg.h"
#include "editors/frmER.h"
#include "editors/frmRefusal.h"
#include "tests/support/RealPanel.h"
#include "text/Conversions.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

// Patient 2 is a man with an adult's records; patient 4 has a visit but no such records.
class RoundTrip : public testing::Test {
protected:
    explicit RoundTrip(const Text& user = L"SORREL,ADA", long patient = 2)
        : real(sharedDataFolder(), user)
        , panel(real.session, patient, L"M", L"47")
        , visit(Piece(real.session.callList(L"MEVHOST VISITS", std::to_wstring(patient)), L"^", 1))
    {
        panel.shared.InitObjects(panel, false);
        panel.objects.transcript.clear();
    }
    ~RoundTrip() override { panel.shared.ReleaseObjects(); }

    template<typename Editor>
    struct Opened {
        Opened(RoundTrip& test, const Text& record)
            : form(test.panel.shared)
        {
            if constexpr (requires { form.m_sVisit; })
                std::tie(form.m_sVisit, form.m_sIEN) = std::tie(test.visit, record);
            else
                form.m_sRefusalIen = record;
            form.load();
            form.open();
            form.Form_Activate();
        }
        Editor* operator->() { return &form; }
        Editor form;
    };

    // The newest record of a kind.
    Text newest(TextView call)
    {
        long long newest = 0;
        const Text reply = real.session.callList(call, std::to_wstring(panel.objects.patient->patientNumber));
        for (const TextView line : replyLines(reply))
            newest = std::max(newest, roundToWhole(leadingNumber(line)));
        return wholeText(newest);
    }

    void pick(Form& form, TextBox& field, TextView text, Control& next)
    {
        form.moveFocus(field);
        field.edit(text);
        form.moveFocus(next);
    }

    Transcript boxes() { return panel.objects.boxes(); }

    RealSession real;
    RealPanel panel;
    Text visit;
};

// Another disposition clears the place; the departure moves to the other piece and is still shown.
TEST_F(RoundTrip, EmergencyVisitWithAnotherDisposition)
{
    const auto saved = [&](const Text& record, auto&& change) {
        Opened<frmER> form(*this, record);
        change(form.form);
        form->press(form->cmdOK);
        EXPECT_FALSE(form->isOpen());
        return newest(L"MEVVER GET");
    };
    const Text record = saved(L"", [&](frmER& form) {
        form.optDisch[2].click();
        form.optTransfer[1].click();
        pick(form, form.txtLoc, L"WILLOW", form.txtCond);
        form.datDepart.enter(L"T-1@14:30", panel.objects.desktop.today);
    });
    EXPECT_EQ(saved(record, [](frmER& form) { form.optDisch[3].click(); }), record);
    Opened<frmER> form(*this, record);
    EXPECT_TRUE(form->optDisch[3].isChosen());
    EXPECT_EQ(form->txtLoc.text(), L"");
    EXPECT_TRUE(form->datDepart.value().ends_with(L" 14:30"));
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(real.session.callText(L"MEVVER DEL", record), L"1");
}

TEST_F(RoundTrip, RefusalOfEachType)
{
    frmRefusal types(panel.shared);
    for (int row = 0; row < types.lstRefusals.count(); ++row) {
        Text name;
        {
            Opened<frmRefusal> form(*this, L"");
            form->moveFocus(form->lstRefusals);
            form->lstRefusals.click(row);
            if (form->txtItem.tag().empty())
                pick(form.form, form->txtItem, L"1", form->datRefused); // by its number
            name = form->txtItem.text();
            form->txtRefComment.edit(L"Row " + std::to_wstring(row));
            form->press(form->cmdOK);
            ASSERT_FALSE(form->isOpen()) << row;
        }
        Opened<frmRefusal> form(*this, newest(L"MEVREF GET"));
        EXPECT_EQ(form->lstRefusals.listIndex(), row);
        EXPECT_NE(form->txtItem.text(), L"");
        EXPECT_EQ(form->txtRefComment.text(), L"Row " + std::to_wstring(row));
        form->datRefused.enter(L"T-3", panel.objects.desktop.today); // under another date
        form->press(form->cmdOK);
        ASSERT_FALSE(form->isOpen()) << row;
        EXPECT_EQ(real.session.callText(L"MEVREF DEL", form->m_sRefusalIen), L"1");
    }
    EXPECT_TRUE(boxes().empty());
}

class RegistryRoundTrip : public RoundTrip {
protected:
    RegistryRoundTrip()
        : RoundTrip(L"ROLLINS,COLE", 4)
    {
        panel.objects.user->keys = { L"MEVZ ASTHMA EDIT", L"QASZMENU" };
    }

    Text registryStatus() { return Piece(real.session.callText(L"MEVVAST GETREG", L"4"), L"^", 2); }
};

TEST_F(RegistryRoundTrip, ActivateEditInactivateDelete)
{
    EXPECT_EQ(registryStatus(), L"");
    {
        Opened<frmAsthma> form(*this, L"");
        form->cboSeverity.choose(2);
        form->txt[2].edit(L"420");
        form->cbo[3].choose(0);
        form->press(form->cmdAdd);
    }
    const Text record = newest(L"MEVVAST GET");
    {
        Opened<frmAsthma> form(*this, record);
        EXPECT_EQ(form->cboSeverity.text() + form->txt[2].text() + form->cbo[3].text(), L"Moderate Persistent420Yes");
        EXPECT_EQ(form->lblStatus.caption(), L"Not in Registry");
        form->m_bRegKey = true;
        panel.objects.desktop.answers = { BoxAnswer::Yes };
        panel.objects.desktop.inForms = { [&](Form& opened) {
            auto& editor = dynamic_cast<frmAsthmaReg&>(opened);
            EXPECT_EQ(editor.lblStatus.caption(), L"Active");
            editor.dat[0].enter(L"T-10", panel.objects.desktop.today);
            editor.dat[2].enter(L"T+1M", panel.objects.desktop.today);
            pick(editor, editor.txtPrv, L"Sorrel, Ada", editor.txtComments); // as the form shows a name
            editor.txtComments.edit(L" -2 days\r\nsecond ^line");
            editor.press(editor.cmdAdd);
            EXPECT_FALSE(editor.isOpen());
        } };
        form->press(form->cmdActivate);
        EXPECT_EQ(registryStatus(), L"ACTIVE|A");
        EXPECT_EQ(form->lblStatus.caption() + form->cmdActivate.caption(), L"Active&Inactivate");
        EXPECT_EQ(form->fg.text(0, 1), dateText(panel.objects.desktop.today - std::chrono::days { 10 }));
        EXPECT_EQ(form->fg.text(3, 1), L"Sorrel, Ada");
        EXPECT_EQ(form->fg.text(4, 1), L" -2 days\r\nsecond  line"); // as typed, and not taken for an error
        // Saving an untouched entry keeps the manager, although the form has no number for it.
        panel.objects.desktop.inForms = { [&](Form& opened) {
            auto& editor = dynamic_cast<frmAsthmaReg&>(opened);
            EXPECT_EQ(editor.txtComments.text(), L" -2 days second  line");
            editor.press(editor.cmdAdd);
        } };
        form->press(form->cmdEditReg);
        EXPECT_EQ(form->fg.text(3, 1), L"Sorrel, Ada");
        panel.objects.desktop.answers = { BoxAnswer::Yes };
        form->press(form->cmdActivate);
        EXPECT_EQ(registryStatus(), L"INACTIVE|I");
        form->press(form->cmdCancel);
    }
    EXPECT_EQ(real.session.callText(L"MEVVAST SETREG", L"4^A"), L"1");

    EXPECT_EQ(registryStatus(), L"ACTIVE|A");
    EXPECT_EQ(real.session.callText(L"MEVVAST DEL", record), L"1");
    EXPECT_EQ(real.session.callText(L"MEVVAST GET", L"4"), L"");
}

}
}
