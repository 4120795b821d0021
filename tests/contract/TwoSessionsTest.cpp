// Two sessions change one record: a save of a record that changed since it was read is refused, and nothing is lost.
#include "control/kalmevRepHistCtrl.h"
#include "editors/frmAsthma.h"
#include "editors/frmAsthmaReg.h"
#include "editors/frmER.h"
#include "editors/frmElder.h"
#include "editors/frmInf.h"
#include "editors/frmPediatric.h"
#include "editors/frmRefusal.h"
#include "editors/frmRepHist.h"
#include "editors/frmTxc.h"
#include "tests/support/RealPanel.h"
#include "text/Conversions.h"

#include <gtest/gtest.h>

#include <signal.h>

namespace health::test {
namespace {

template<typename Editor>
std::unique_ptr<Form> formOf(modShared& shared, const Text& visit, const Text& record)
{
    auto form = std::make_unique<Editor>(shared);
    if constexpr (requires { form->m_sVisit; })
        std::tie(form->m_sVisit, form->m_sIEN) = std::tie(visit, record);
    else if constexpr (requires { form->m_sRefusalIen; })
        form->m_sRefusalIen = record;
    return form;
}

// A kind of record: how it is saved ("RECORD" and "VISIT" stand for numbers), and its form.
struct Kind {
    const char* name;
    TextView set;
    TextView remove; // empty if the record cannot be deleted
    long patient;
    TextView sex;
    TextView age;
    TextView parameter;
    std::unique_ptr<Form> (*form)(modShared&, const Text& visit, const Text& record);

    bool isOnePerPatient() const { return parameter.find(L"RECORD") == TextView::npos; }
};

const Kind Kinds[] = {
    { "Reproductive", L"MEVREP SET", L"MEVREP DEL", 1, L"F", L"29", L"1^G2P2LC2SA0TA0^^^^0^^", formOf<frmRepHist> },
    { "Birth", L"MEVBMSR SET", L"MEVBMSR DEL", 6, L"F", L"4", L"6^6 11^1^^^^", formOf<frmPediatric> },
    { "Feeding", L"MEVVIF SET", L"MEVVIF DEL", 5, L"M", L"0", L"RECORD^VISIT^2", formOf<frmInf> },
    { "Function", L"MEVVELD SET", L"MEVVELD DEL", 10, L"F", L"84", L"RECORD^VISIT^INDEPENDENT", formOf<frmElder> },
    { "Asthma", L"MEVVAST SET", L"MEVVAST DEL", 2, L"M", L"47", L"RECORD^VISIT^2^80", formOf<frmAsthma> },
    { "Registry", L"MEVVAST SETREG", L"", 11, L"F", L"15", L"11^A^01/02/2026^^^^Told so", formOf<frmAsthmaReg> },
    { "Contract", L"MEVVTXC SET", L"MEVVTXC DEL", 2, L"M", L"47", L"RECORD^VISIT^P^01/02/2026^1", formOf<frmTxc> },
    { "Refusal", L"MEVREF SET", L"MEVREF DEL", 2, L"M", L"47", L"RECORD^EXAM^1^2^01/02/2026^Told so",
        formOf<frmRefusal> },
    { "Emergency", L"MEVVER SET", L"MEVVER DEL", 2, L"M", L"47", L"RECORD^VISIT^E^A^W^^^^^^3260102.0910^",
        formOf<frmER> },
};

class TwoSessions : public testing::TestWithParam<Kind> {
protected:
    TwoSessions()
    {
        panel.shared.InitObjects(panel, false);
        panel.objects.user->keys = { L"PROVIDER", L"QASZMENU" };
        visit = Piece(other.session.callList(L"MEVHOST VISITS", std::to_wstring(kind.patient)), L"^", 1);
        if (!kind.isOnePerPatient()) {
            EXPECT_EQ(change(L""), L"1");
            const Text prefix(kind.set.substr(0, kind.set.find(L' ')));
            const Text reply = other.session.callList(prefix + L" GET", std::to_wstring(kind.patient));
            for (const TextView line : replyLines(reply))
                newest = std::max(newest, roundToWhole(leadingNumber(line)));
            record = wholeText(newest);
        }
        panel.objects.transcript.clear();
    }
    ~TwoSessions() override { panel.shared.ReleaseObjects(); }

    // The other session's save.
    Text change(const Text& number)
    {
        return other.session.callText(kind.set, replaced(replaced(kind.parameter, L"RECORD", number), L"VISIT", visit));
    }
    Text remove()
    {
        return own.session.callText(kind.remove, kind.isOnePerPatient() ? std::to_wstring(kind.patient) : record);
    }

    std::unique_ptr<Form> opened()
    {
        auto form = kind.form(panel.shared, visit, record);
        form->load();
        form->open();
        form->Form_Activate();
        return form;
    }
    // Presses OK; the text of the box, empty if the save closed the form.
    Text save(Form& form)
    {
        panel.objects.transcript.clear();
        form.press(*form.defaultButton());
        return form.isOpen() ? panel.objects.boxes().at(0) : Text();
    }
    void list()
    {
        kalmevRepHistCtrl control(panel.shared, panel);
        control.UserControl_Initialize();
        control.UserControl_Show();
    }
    void look()
    {
        list();
        if (kind.set == L"MEVVER SET")
            opened(); // emergency visits are not listed
    }

    const Kind& kind = GetParam();
    const bool isRegistry = kind.remove.empty();
    RealSession own { sharedDataFolder(), isRegistry ? L"ROLLINS,COLE" : L"SORREL,ADA" };
    RealSession other { sharedDataFolder(), isRegistry ? L"ROLLINS,COLE" : L"HALTON,PIERS" };
    RealPanel panel { own.session, kind.patient, kind.sex, kind.age };
    Text visit;
    Text record;
    long long newest = 0;
    const Text who = isRegistry ? L"ROLLINS,COLE" : L"HALTON,PIERS";
};

INSTANTIATE_TEST_SUITE_P(
    Kinds, TwoSessions, testing::ValuesIn(Kinds), [](const auto& row) { return std::string(row.param.name); });

TEST_P(TwoSessions, SaveOfWhatAnotherHasChangedIsRefused)
{
    if (kind.set == L"MEVREP SET")
        other.session.signOn(L"SORREL,ADA"); // the other user may not
    const Text name = kind.set == L"MEVREP SET" ? L"SORREL,ADA" : who;
    const auto stale = opened();
    ASSERT_EQ(change(record), L"1");
    list(); // an event reloads the list behind the form, which keeps its old values
    if (isRegistry) { // a change of the status alone does not update the rest either
        EXPECT_EQ(own.session.callText(L"MEVVAST SETREG", L"11^A"), L"1");
    }
    for (int time = 0; time < 2; ++time) {
        const Text told = save(*stale);
        EXPECT_TRUE(told.starts_with(L"box [Error] This record was changed by " + name + L" at ")) << narrow(told);
        EXPECT_TRUE(told.ends_with(L". Open it again to see the change.")) << narrow(told);
    }
    // No false alarm after an own save, in a reopened form, or after a lost connection.
    EXPECT_EQ(save(*opened()), L"");
    EXPECT_EQ(save(*opened()), L"");
    const auto open = opened();
    ::kill(static_cast<pid_t>(own.processId()), SIGKILL);
    own.retries = 1;
    EXPECT_EQ(save(*open), L"");

    // A form whose record could not be read must not overwrite it.
    ::kill(static_cast<pid_t>(own.processId()), SIGKILL);
    const auto unread = opened();
    QTest::qWait(1); // calls are possible again in the next turn of the event loop
    const Text told = save(*unread);
    EXPECT_NE(told, L""); // some forms first report missing values
    if (told.starts_with(L"box [Error] ")) {
        EXPECT_EQ(told,
            L"box [Error] This record could not be read into the form, so it cannot be overwritten. Open it again.");
    }
    if (isRegistry) { // its form is read by two calls
        const auto half = opened();
        own.session.expectCalls(std::array {
            ExpectedCall { ExpectedCall::Form::Lines, L"MEVVAST GETNOTE", L"11", ExpectedCall::Purpose::Editor } });
        EXPECT_EQ(save(*half), told);
    }
}

TEST_P(TwoSessions, DeleteOfWhatAnotherHasChangedIsRefused)
{
    if (isRegistry)
        return;
    if (kind.set == L"MEVREP SET")
        other.session.signOn(L"SORREL,ADA");
    if (kind.isOnePerPatient()) {
        ASSERT_EQ(change(record), L"1");
    }
    const auto stale = opened(); // read before the list
    for (int time = 0; time < 2; ++time) { // the mark of a list follows each change
        look();
        ASSERT_EQ(change(record), L"1");
    }
    const Text told = remove();
    EXPECT_TRUE(told.starts_with(L"-1^This record was changed by ")) << narrow(told);
    EXPECT_TRUE(told.ends_with(L": look at it before you delete it.")) << narrow(told);
    look();
    EXPECT_EQ(remove(), L"1");
    // Deleted while a form is open: a form of a record that exists once per patient could recreate it unnoticed.
    if (kind.isOnePerPatient()) {
        EXPECT_EQ(change(record), L"1");
        EXPECT_TRUE(save(*stale).starts_with(L"box [Error] This record was changed by "));
    } else {
        EXPECT_NE(save(*stale).find(L" does not exist any more."), Text::npos);
    }
}

}
}
