// What forms say beside and below their fields: how entries are understood, what they were, why they changed.
#include "lookups/frmLookup.h"
#include "tests/support/Editors.h"
#include "tests/support/FormFixture.h"
#include "tests/support/SaidByForm.h"

namespace health::test {

using ExplainedBirth = FormFixture<frmPediatric>;

TEST_F(ExplainedBirth, WeightsInTheOtherUnits)
{
    for (const auto& [option, typed, expected] : std::initializer_list<std::tuple<TextView, TextView, TextView>> {
             { L"0", L"7 2", L"= 3.232 kg \u00B7 3,232 g" }, { L"0", L"7-2", L"= 3.232 kg \u00B7 3,232 g" },
             { L"0", L"3.2k", L"= 7 lbs 1 oz \u00B7 3,200 g" }, { L"0", L"3200G", L"= 7 lbs 1 oz \u00B7 3.2 kg" },
             { L"1", L"3.2", L"3.2 kg = 7 lbs 1 oz \u00B7 3,200 g" },
             { L"2", L"980", L"980 g = 2 lbs 3 ozs \u00B7 0.98 kg" }, { L"0", L"", L"" },
             { L"0", L"7", L"lbs, then a blank and the ounces" }, { L"0", L"7 ", L"lbs, then a blank and the ounces" },
             { L"0", L"25 0", L"!more than 1 lb and less than 25 lbs" }, { L"0", L"7 17", L"!ounces from 0 to 16" },
             { L"1", L"10", L"!more than 0.907 kg and less than 10 kg" },
             { L"2", L"907", L"!more than 907 g and less than 10,000 g" },
             { L"1", L"x", L"!not a weight, see the examples" } }) {
        host.session->values.clear();
        reply(L"MEVUTL GETPARM", option);
        frmPediatric own(shared);
        open(own);
        own.moveFocus(own.txt[0]);
        own.txt[0].edit(typed);
        EXPECT_EQ(said(own, own.txt[0]), expected) << narrow(typed);
        const bool isRefused = !typed.empty() && expected.find(L'=') == Text::npos;
        EXPECT_EQ(own.moveFocus(own.txt[1]), !isRefused) << narrow(typed); // one rule judges both
        EXPECT_EQ(own.txt[0].fault().empty(), !isRefused);
    }
}

TEST_F(ExplainedBirth, LoadedWeightsAreConvertedEvenIfTheyCannotBeEntered)
{
    reply(L"MEVBMSR GET", L"40^2^18.2^18200^^^^^^25");
    open();
    EXPECT_EQ(said(form, form.txt[1]), L"");
    EXPECT_EQ(said(form, form.txt[0]), L"= 18.2 kg \u00B7 18,200 g");
}

TEST_F(ExplainedBirth, AgesAndThePatients)
{
    struct BornOn : ScriptedPatient {
        Text words;
        Text displayAge() const override { return words; }
    };
    const auto child = std::make_shared<BornOn>();
    child->patientNumber = 12;
    child->patientAge = L"0";
    host.session->objects[L"CSS_Patient.Patient"] = child;
    shared.ReleaseObjects();
    shared.InitObjects(host, false);
    constexpr TextView Older = L" \u00B7 older than the patient";
    for (const auto& [age, typed, words, isOlder] :
        std::initializer_list<std::tuple<TextView, TextView, TextView, bool>> {
            { L"4 months", L"6M", L"6 months", true }, { L"4 months", L"4m", L"4 months", false },
            { L"4 months", L"152D", L"152 days", false }, { L"4 months", L"22W", L"22 weeks", false },
            { L"4 months", L"1Y", L"1 year", true }, { L"12 days", L"2W", L"2 weeks", true },
            { L"58 days", L"2M", L"2 months", false }, { L"2 years", L"36M", L"36 months", true },
            { L"2 years", L"35.5M", L"35.5 months", false }, { L"", L"1Y", L"1 year", true },
            { L"unknown", L"11M", L"11 months", false } }) {
        child->words = age;
        frmPediatric own(shared);
        open(own);
        own.txt[3].edit(typed);
        EXPECT_EQ(said(own, own.txt[3]), (isOlder ? L"~" : L"") + Text(words) + (isOlder ? Text(Older) : Text()))
            << narrow(age) << narrow(typed);
    }
    child->patientAge = L"unknown";
    open();
    form.txt[2].edit(L"90Y");
    EXPECT_EQ(said(form, form.txt[2]), L"90 years"); // nothing is known
    form.txt[2].edit(L"6");
    EXPECT_EQ(said(form, form.txt[2]), L"then D, W, M or Y");
    form.txt[2].edit(L"6X");
    EXPECT_EQ(said(form, form.txt[2]).substr(0, 9), L"!a number");
    form.txt[1].edit(L"25");
    EXPECT_EQ(said(form, form.txt[1]), L"!from 1 to 24");
}

TEST_F(ExplainedBirth, LookupFieldsSayWhoIsSaved)
{
    reply(L"MEVBMSR GET", replies::Birth);
    reply(L"MEVUTL DICLKUP", L"44^SMITH,ANNA^SMITH,ANNA^F\r\n");
    open();
    EXPECT_EQ(said(form, form.txtPat), L"+Hartley, Rose");
    typeInto(form.txtPat, L"OAK");
    EXPECT_EQ(said(form, form.txtPat), L"~still Hartley, Rose");
    form.txtPat.edit(L"");
    form.moveFocus(form.txt[1]);
    typeInto(form.txtPat, L"smi");
    EXPECT_EQ(said(form, form.txtPat), L"not looked up yet");
    form.moveFocus(form.txt[1]);
    EXPECT_EQ(said(form, form.txtPat) + form.txtPat.note(), L"+Smith, AnnaThe only match for \"smi\".");
    typeInto(form.txtPat, L"");
    form.moveFocus(form.txt[1]);
    reply(L"MEVUTL DICLKUP", L"1^A,B^A,B^F\r\n2^C,D^C,D^F\r\n");
    host.desktop.inForms.push_back([](Form& opened) { opened.press(dynamic_cast<frmLookup&>(opened).cmdSelect); });
    typeInto(form.txtPat, L"c");
    form.txtPat.setFault(L"fault");
    form.moveFocus(form.txt[1]);
    EXPECT_EQ(said(form, form.txtPat) + form.txtPat.note() + form.txtPat.fault(), L"+A, B"); // chosen by the user
    reply(L"MEVUTL DICLKUP", L"");
    typeInto(form.txtPat, L"");
    form.moveFocus(form.txt[1]);
    typeInto(form.txtPat, L"zz");
    form.moveFocus(form.txt[1]);
    EXPECT_EQ(form.txtPat.text() + form.txtPat.note(), L"\"zz\" was removed: nothing was chosen.");
    // A letter typed elsewhere can change the weight's unit.
    form.txt[3].pressKey(L'g');
    EXPECT_EQ(said(form, form.txt[0]), L"!not a weight, see the examples");
    EXPECT_EQ(form.txt[0].note(), L"The unit has changed to (grams), because \"g\" was typed in another field.");
}

using ExplainedAsthma = FormFixture<frmAsthma>;

TEST_F(ExplainedAsthma, RangesFaultsAndFormerValues)
{
    form.m_sIEN = L"3";
    reply(L"MEVVAST GET", replies::Asthma);
    open();
    EXPECT_EQ(said(form, form.txt[0]), L"/0 to 150");
    form.txt[2].edit(L"99");
    EXPECT_EQ(said(form, form.txt[2]), L"!Entry must be between 100 and 700./100 to 700");
    EXPECT_FALSE(form.moveFocus(form.txt[2]) && form.moveFocus(form.txt[1]));
    EXPECT_EQ(form.txt[2].fault(), L"Entry must be between 100 and 700.");
    form.txt[2].edit(L"430");
    EXPECT_EQ(said(form, form.txt[2]) + form.txt[2].fault(), L"was 450/100 to 700");
    form.cboSeverity.choose(3);
    form.cbo[1].choose(0);
    EXPECT_EQ(
        said(form, form.cboSeverity) + said(form, form.cbo[0]) + said(form, form.cbo[1]), L"was Mild Persistentwas No");
}

using ExplainedFunctions = FormFixture<frmElder>;

TEST_F(ExplainedFunctions, BetterWorseAndCounts)
{
    form.m_sIEN = L"31";
    EXPECT_EQ(said(form, form.fra[0]), L"");
    reply(L"MEVVELD GET", replies::Functional);
    open();
    EXPECT_EQ(said(form, form.fra[0]) + L"; " + said(form, form.fra[1]), L"1 of 6 independent; 0 of 6 independent");
    form.cbo[0].choose(1);
    form.cbo[1].choose(0);
    form.cbo[2].choose(-1);
    form.cbo[12].choose(0);
    Text all;
    for (const std::size_t item : { 0u, 1u, 2u, 3u, 12u })
        all += said(form, form.cbo[item]) + L";";
    EXPECT_EQ(all, L"~was Independent;+was Needs Help;was Totally Dependent;;was Decline;");
}

using ExplainedHistory = FormFixture<frmRepHist>;

TEST_F(ExplainedHistory, CountsThatCannotBe)
{
    open();
    for (const auto& [counts, expected] : std::initializer_list<std::pair<std::array<TextView, 5>, TextView>> {
             { { L"3", L"1", L"2", L"1", L"1" }, L"" }, // twins
             { { L"1", L"1", L"1", L"0", L"0" }, L"" }, { { L"1", L"0", L"0", L"0", L"0" }, L"" },
             { { L"1", L"2", L"0", L"0", L"0" }, L"P: P is more than G" },
             { { L"2", L"1", L"1", L"1", L"1" }, L"G: G is less than P, SA and TA together" },
             { { L"1", L"0", L"1", L"1", L"0" }, L"LC: P is 0, but LC is not" } }) {
        for (std::size_t i = 0; i < counts.size(); ++i)
            form.txNumRH[i].edit(counts[i]);
        Text notes;
        for (std::size_t i = 0; i < counts.size(); ++i) {
            const Explanation line = form.explain(form.txNumRH[i]);
            if (!line.beside.empty())
                notes += replaced(form.lblFP[i].caption(), L"&", L"") + L": " + line.beside;
        }
        EXPECT_EQ(notes, expected);
    }
    EXPECT_EQ(said(form, form.txNumRH[3]), L"/Spontaneous Abortions, 0 to 99");
    for (const auto& [typed, note] : { std::pair<TextView, TextView> { L"100", L"Counts go up to 99." },
             { L"12x", L"\"12x\" is not a count: counts consist of digits only." }, { L"12", L"" }, { L"", L"" } }) {
        form.txNumRH[3].edit(typed);
        EXPECT_EQ(form.txNumRH[3].note(), note);
    }
}

using ExplainedRefusal = FormFixture<frmRefusal>;

TEST_F(ExplainedRefusal, CommentAndItem)
{
    open();
    for (const auto& [length, expected] : { std::pair<std::size_t, TextView> { 30, L"/30 of 200 characters" },
             { 0, L"/0 of 200 characters" }, { 1, L"!1 character: at least 2 are needed" },
             { 181, L"~181 of 200 characters" }, { 201, L"!201 of at most 200 characters" } }) {
        form.txtRefComment.edit(Text(length, L'x') + L"\r\n"); // saved without line breaks
        EXPECT_EQ(said(form, form.txtRefComment), expected);
    }
    form.moveFocus(form.txtRefComment);
    form.moveFocus(form.txtItem);
    EXPECT_EQ(form.txtRefComment.fault(), L"Comment cannot be longer than 200 characters.");
    form.txtRefComment.edit(L"one\r\ntwo");
    form.moveFocus(form.txtItem);
    EXPECT_EQ(form.txtRefComment.fault() + form.txtRefComment.note(), L"The line breaks were removed.");
    form.press(form.cmdOK);
    EXPECT_FALSE(form.lstRefusals.fault().empty()); // the missing type
    form.lstRefusals.setListIndex(7); // not checked yet
    EXPECT_TRUE(saidToBeSaved(form).find(L"PAP") == Text::npos) << narrow(saidToBeSaved(form));
    reply(L"MEVREF REFLIST", L"9");
    form.lstRefusals.click(7);
    EXPECT_EQ(form.lstRefusals.fault() + form.txtItem.note(), L"The only item of this type.");
    EXPECT_EQ(said(form, form.txtItem), L"+Pap Smear");
    form.lstRefusals.click(1);
    EXPECT_EQ(form.txtItem.note(), L"\"PAP SMEAR\" was removed: the refusal type has changed.");
    reply(L"MEVUTL DICLKUP", L"1^^A\r\n2^^B\r\n");
    form.moveFocus(form.txtItem);
    form.txtItem.edit(L"eye");
    form.press(form.cmdItem); // the dialog is cancelled
    EXPECT_EQ(form.txtItem.note(), L"\"eye\" was removed: nothing was chosen.");
}

using ExplainedEmergency = FormFixture<frmER>;

TEST_F(ExplainedEmergency, ChoicesThatEmptyOtherFields)
{
    form.m_sIEN = L"45";
    reply(L"MEVVER GET", L"45^^^^Other|O^by raft^^^^TRANSFERRED|T^^^^^RIVERSIDE HOSPITAL|7;AUTTVNDR(\r\n");
    open();
    EXPECT_EQ(said(form, form.txtLoc) + form.txtLoc.note() + form.txtOther.note(), L"/Riverside Hospital");
    form.optArrival[1].click();
    EXPECT_EQ(form.txtOther.note(), L"\"by raft\" was removed: another option is chosen.");
    form.optArrival[6].click();
    EXPECT_EQ(form.txtOther.note(), L"");
    form.optTransfer[1].click();
    EXPECT_EQ(form.txtLoc.note(), L"\"Riverside Hospital\" was removed: it is not a facility.");
    form.optDisch[0].click();
    form.optDisch[2].click();
    reply(L"MEVUTL DICLKUP", L"9^^NORTH CLINIC\r\n");
    typeInto(form.txtLoc, L"nor");
    form.moveFocus(form.txtCond);
    EXPECT_EQ(said(form, form.txtLoc) + form.txtLoc.note(), L"/North ClinicThe only match for \"nor\".");
    form.optDisch[0].click();
    EXPECT_EQ(form.txtLoc.note(), L"\"NORTH CLINIC\" was removed: the patient was not transferred.");
    form.txtCond.edit(Text(180, L'x'));
    EXPECT_EQ(said(form, form.txtCond), L"");
    form.txtCond.edit(Text(200, L'x'));
    EXPECT_EQ(said(form, form.txtCond), L"~200 of 200 characters");
}

using ExplainedRegistry = FormFixture<frmAsthmaReg>;

TEST_F(ExplainedRegistry, ManagerIsKeptUnlessLookedUp)
{
    EXPECT_EQ(said(form, form.txtPrv), L""); // the record has no manager
    reply(L"MEVVAST GETREG", replies::Registered);
    reply(L"MEVUTL DICLKUP", L"15^^OAK,KIT\r\n");
    open();
    EXPECT_EQ(said(form, form.txtPrv), L"unchanged");
    form.txtPrv.edit(L"");
    EXPECT_EQ(said(form, form.txtPrv), L"~the server keeps Smith, John");
    typeInto(form.txtPrv, L"oak");
    EXPECT_EQ(said(form, form.txtPrv), L"not looked up yet");
    form.moveFocus(form.txtComments);
    EXPECT_EQ(said(form, form.txtPrv), L"+Oak, Kit");
    typeInto(form.txtPrv, L"elm");
    EXPECT_EQ(saidToBeSaved(form).find(L"Oak"), Text::npos); // leaving the field drops the number
}

}
