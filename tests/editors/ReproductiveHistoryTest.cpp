#include "editors/frmRepHist.h"
#include "tests/support/FormFixture.h"

namespace health::test {

class ReproductiveHistory : public FormFixture<frmRepHist> {
protected:
    void load(TextView record)
    {
        reply(L"MEVREP GET", record);
        open();
    }

    static Text counts(const frmRepHist& form)
    {
        Text texts;
        for (const TextBox& box : form.txNumRH)
            texts += (texts.empty() ? L"" : L",") + box.text();
        return texts;
    }

    Text saved()
    {
        form.press(form.cmdAdd);
        return host.calls().back();
    }

    // What a key becomes when it is pressed.
    static wchar_t keyAfter(auto& control, wchar_t key)
    {
        control.pressKey(key);
        return key;
    }

    static constexpr TextView Empty = L"G0P0LC0SA0TA0^^^^^";
};

TEST_F(ReproductiveHistory, PiecesAreReadAndSavedInDifferentOrders)
{
    host.patient->patientAge = L"9"; // the youngest
    load(replies::Reproductive);
    EXPECT_CALLS(L"call MEVREP GET(12)");
    EXPECT_EQ(counts(form), L"3,2,1,0,0");
    EXPECT_TRUE(form.chkPregnant.isChecked());
    EXPECT_TRUE(form.datDelivery.canBeUsed());
    EXPECT_EQ(form.lblPreg[0].foreColour(), 2u);
    EXPECT_EQ(form.activeControl(), &form.txNumRH[0]);
    EXPECT_EQ(
        saved(), L"call MEVREP SET(12^G3P2LC1SA0TA0^01/05/2026^Oral Contraceptives^12/01/2025^1^10/12/2026^Sonogram)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(ReproductiveHistory, CountStrings)
{
    for (const auto& [text, expected] : { std::pair<TextView, TextView> { L"G12P3", L"12,3,0,0,0" },
             { L"G123", L"12,0,0,0,0" }, { L"g1xp2", L"1,2,0,0,0" }, { L"P2", L"0,2,0,0,0" }, { L"G1P", L"1,0,0,0,0" },
             { L"LC4TA9SA10", L"0,0,4,10,9" }, { L"junk", L"0,0,0,0,0" } }) {
        frmRepHist own(shared);
        reply(L"MEVREP GET", Text(text) + L"^^^^^");
        open(own);
        EXPECT_EQ(counts(own), expected) << narrow(text);
    }
}

TEST_F(ReproductiveHistory, FormIsGreyAndNotLoadedForOtherPatients)
{
    for (const auto& [sex, age] : { std::pair<TextView, TextView> { L"M", L"30" }, { L"F", L"8" }, { L"f", L"30" } }) {
        host.patient->patientSex = sex;
        host.patient->patientAge = age;
        host.transcript.clear();
        frmRepHist own(shared);
        open(own);
        EXPECT_CALLS();
        for (const Control* control : std::initializer_list<const Control*> {
                 &own.txNumRH[0], &own.datLMP, &own.cboFP, &own.chkPregnant, &own.datDelivery })
            EXPECT_FALSE(control->canBeUsed());
        EXPECT_EQ(own.lbl[0].foreColour(), GreyText);
        EXPECT_EQ(own.cboFP.backColour(), ButtonFace);
        own.press(own.cmdAdd);
        EXPECT_CALLS(L"call MEVREP SET(12^G0P0LC0SA0TA0^^^)");
    }
}

TEST_F(ReproductiveHistory, PregnancyBlockFollowsTheBox)
{
    load(Empty);
    EXPECT_FALSE(form.chkPregnant.isChecked());
    EXPECT_FALSE(form.datDelivery.canBeUsed()); // although the whole block was enabled
    EXPECT_EQ(form.lblPreg[0].foreColour(), 2u);
    form.chkPregnant.click();
    EXPECT_TRUE(form.datDelivery.canBeUsed());
    enterDate(form.datDelivery, L"T+100");
    form.chkPregnant.click();
    EXPECT_FALSE(form.datDelivery.canBeUsed());
    EXPECT_EQ(saved(), L"call MEVREP SET(12^G0P0LC0SA0TA0^^^^0^06/23/2026^)"); // nothing is emptied
}

TEST_F(ReproductiveHistory, FailedLoadGreysTheFormButNotItsSave)
{
    load(L"-1^Not today.^IUD");
    EXPECT_BOXES(L"box [Error Loading Reproductive Factors] Not today.");
    EXPECT_FALSE(form.txNumRH[0].canBeUsed());
    EXPECT_EQ(saved(), L"call MEVREP SET(12^G0P0LC0SA0TA0^^^^0^^)");
}

TEST_F(ReproductiveHistory, DatesAndTheirBounds)
{
    load(L"G1P0LC0SA0TA0^^CHARMS^^GUESS^01/01/2020"); // a stored past date is accepted
    EXPECT_EQ(form.datDelivery.value(), L"01/01/2020");
    constexpr TextView Future = L"Future dates are not allowed.";
    for (const auto& [date, typed, kept, refusal] :
        { std::tuple<mevZvDate&, TextView, TextView, TextView> { form.datDelivery, L"T", L"03/15/2026", L"" },
            { form.datDelivery, L"T+270", L"12/10/2026", L"" },
            { form.datDelivery, L"T+271", L"12/10/2026 09:30", L"Date cannot be more than 9 months in the future." },
            { form.datDelivery, L"T-1", L"", L"Past dates are not allowed." },
            { form.datDelivery, L"soon", L"", L"This is not a valid date format." },
            { form.datLMP, L"T", L"03/15/2026", L"" }, { form.datLMP, L"T+1", L"", Future },
            { form.datLMP, L"T 23:00", L"03/15/2026 23:00", L"" }, { form.datFP, L"3/16/2026", L"", Future } }) {
        host.transcript.clear();
        enterDate(date, typed);
        EXPECT_EQ(date.value(), kept) << narrow(typed);
        EXPECT_EQ(
            host.boxes(), refusal.empty() ? Transcript {} : Transcript { L"box [Invalid Date] " + Text(refusal) });
    }
}

TEST_F(ReproductiveHistory, CountsAndArrowsStayInStep)
{
    load(Empty);
    TextBox& box = form.txNumRH[0];
    typeInto(box, L"12");
    EXPECT_EQ(form.udNumRH[0].value(), 12);
    form.udNumRH[0].step(1);
    EXPECT_EQ(box.text(), L"13");
    for (const auto& [text, kept, selected] : { std::tuple<TextView, TextView, bool> { L"100", L"99", false },
             { L"", L"0", true }, { L"-5", L"0", true }, { L"5", L"5", false }, { L"5^", L"5", false } }) {
        box.edit(text);
        EXPECT_EQ(box.text(), kept) << narrow(text);
        EXPECT_TRUE(box.isAllSelected() || !selected); // so that typing replaces it
    }
    typeInto(box, L"1q2");
    EXPECT_EQ(form.udNumRH[0].value(), 12); // a letter is discarded
}

TEST_F(ReproductiveHistory, EnterGoesOnToTheNextField)
{
    load(Empty);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(form.activeControl(), &form.txNumRH[i]);
        EXPECT_EQ(form.txNumRH[i].pressKey(EnterKey), 0);
    }
    EXPECT_EQ(form.activeControl(), &form.datLMP);
    EXPECT_EQ(keyAfter(form.cboFP, EnterKey), 0);
    EXPECT_EQ(form.activeControl(), &form.datFP);
    keyAfter(form.cboEstMethod, EnterKey);
    EXPECT_EQ(form.activeControl(), &form.txNumRH[0]);
    form.txNumRH[3].MouseMove();
    EXPECT_EQ(form.txNumRH[3].toolTip(), L"Spontaneous Abortions");
}

// Enter leaves a date that was just edited; in an untouched one it presses the default button.
TEST_F(ReproductiveHistory, EnterGoesOnFromAnEnteredDate)
{
    load(replies::Reproductive);
    for (auto& [date, typed, kept, next] : std::initializer_list<std::tuple<mevZvDate&, TextView, TextView, Control&>> {
             { form.datLMP, L"T", L"03/15/2026", form.cboFP }, { form.datFP, L"T-1", L"03/14/2026", form.chkPregnant },
             { form.datDelivery, L"T+1", L"03/16/2026", form.cboEstMethod }, { form.datLMP, L"T+1", L"", form.datLMP },
             { form.datFP, L"last week", L"", form.datFP } }) {
        date.setClock([this] { return host.desktop.today; });
        form.moveFocus(date);
        EXPECT_EQ(keyAfter(date, EnterKey), EnterKey);
        date.type(typed);
        EXPECT_EQ(date.shown(), typed);
        EXPECT_EQ(keyAfter(date, L'1'), L'1');
        EXPECT_EQ(keyAfter(date, EnterKey), 0);
        EXPECT_EQ(date.value(), kept);
        EXPECT_EQ(form.activeControl(), &next);
    }
    EXPECT_BOXES(
        L"box [Invalid Date] Future dates are not allowed.", L"box [Invalid Date] This is not a valid date format.");
}

}
