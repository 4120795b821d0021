// What forms say that they will save, compared with what they send; and which field a refused save is about.
#include "control/RecordTypes.h"
#include "tests/support/Editors.h"
#include "tests/support/FormFixture.h"
#include "tests/support/SaidByForm.h"

#include <algorithm>

namespace health::test {

class Summaries : public testing::Test {
protected:
    Summaries()
    {
        shared.InitObjects(host, false);
        host.patient->patientNumber = 12;
    }

    // Opens a form on the reply, changes it, and compares the summary and then the sent parameter.
    template<typename Editor>
    void check(
        TextView call, TextView record, const std::function<void(Editor&)>& change, TextView summary, TextView sent)
    {
        host.transcript.clear();
        host.session->reply(call, record);
        Editor form(shared);
        if constexpr (requires { form.m_sIEN; }) {
            form.m_sIEN = record.empty() ? L"" : L"45";
            form.m_sVisit = L"81";
        } else if constexpr (requires { form.m_sRefusalIen; })
            form.m_sRefusalIen = record.empty() ? L"" : L"8";
        form.load();
        form.open();
        form.Form_Activate();
        if (change)
            change(form);
        EXPECT_EQ(saidToBeSaved(form), summary);
        if constexpr (requires { form.cmdOK; })
            form.press(form.cmdOK);
        else
            form.press(form.cmdAdd);
        const Transcript calls = host.lines(L"call MEV");
        const auto saved =
            std::ranges::find_if(calls, [](const Text& line) { return line.find(L" SET") != Text::npos; });
        ASSERT_NE(saved, calls.end());
        EXPECT_EQ(saved->substr(saved->find(L'(')), L"(" + Text(sent) + L")");
    }

    ScriptedHost host;
    modShared shared { host.desktop };
};

TEST_F(Summaries, OfBirthMeasurements)
{
    check<frmPediatric>(
        L"MEVBMSR GET", L"7^2^3.23^3230^^^^^^2^6M^2W^5M^HARTLEY,ROSE|1",
        [](frmPediatric& form) { form.txt[4].edit(L"4m"); },
        L"Birth Weight=7 lbs 2 ozs (3.232 kgs); Birth Order=2; Formula Started=6M; Breast Stopped=2W; "
        L"Solids Started=4M*; Mother=Hartley, Rose # Solids Started is sent in capitals: 4M.",
        L"12^7 2^2^6M^2W^4M^1");
    check<frmPediatric>(
        L"MEVBMSR GET", L"",
        [](frmPediatric& form) {
            form.txt[0].type(L"g");
            form.txt[0].edit(L"3200");
            form.txt[1].edit(L"1^");
        },
        L"Birth Weight=7 lbs 1 oz (3.2 kgs); Birth Order=1 ; Formula Started=; Breast Stopped=; Solids Started=; "
        L"Mother= # The weight has no letter, so it is sent in the present unit: 3200G. # Birth Order: a \"^\" cannot "
        L"be saved and becomes a blank.",
        L"12^3200G^1 ^^^^");
}

TEST_F(Summaries, OfInfantFeedingAndAsthma)
{
    check<frmInf>(
        L"MEVVIF GET", replies::Feeding, [](frmInf& form) { form.lstINF.click(0); }, L"Exclusive Breastfeeding*",
        L"45^81^1");
    check<frmAsthma>(
        L"MEVVAST GET", replies::Asthma,
        [](frmAsthma& form) {
            form.txt[0].edit(L"");
            form.cbo[1].choose(0);
        },
        L"Severity=Mild Persistent; FEV=*; FEF=80; PEF=450; ETS=Yes; Particulates=Yes*; Dust Mites=Yes; Mgt. Plan=No",
        L"45^81^2^^80^450^Yes^Yes^Yes^No");
    check<frmAsthma>(L"MEVVAST GET", L"3^^^MILD|7^^^^MAYBE\r\n", {},
        L"Severity=*; FEV=; FEF=; PEF=; ETS=*; Particulates=; Dust Mites=; Mgt. Plan= # Severity: the stored \"MILD\" "
        L"is not among the choices, so it is sent empty. # ETS: the stored \"MAYBE\" is not among the choices, so it "
        L"is sent empty.",
        L"45^81^^^^^^^^");
}

TEST_F(Summaries, OfFunctionalStatus)
{
    check<frmElder>(
        L"MEVVELD GET", Text(replies::Functional) + L"45\r\n", // a line without items changes none
        [](frmElder& form) {
            form.cbo[2].choose(-1);
            form.cbo[13].choose(1);
        },
        L"Status Change=Decline; Caregiver=No*; Toileting=Independent; Bathing=Needs Help; Dressing=*; Transfers=; "
        L"Feeding=; Continence=; Finances=; Cooking=; Shopping=; Chores=Needs Help; Meds=; Transportation=",
        L"45^81^Independent^Needs Help^^^^^^^^Needs Help^^^Decline^No");
}

TEST_F(Summaries, OfContracts)
{
    check<frmTxc>(
        L"MEVVTXC GET", L"45^^02/01/2026@10:00|81^PAIN|P^02/01/2026^OAK,KIT J|15\r\n",
        [](frmTxc& form) { form.opt[1].click(); }, L"Initiated=02/01/2026; Type=Mental Health*; Provider=Oak, Kit J",
        L"45^81^M^02/01/2026^15");
    check<frmTxc>(L"MEVVTXC GET", L"45^^01/05/2026@10:00|81^PAIN|P^^OAK,KIT J|15\r\n", {},
        L"Initiated=01/05/2026*; Type=Pain; Provider=Oak, Kit J # The stored contract has no date of its own; the "
        L"visit's date is sent.",
        L"45^81^P^01/05/2026^15");
    check<frmTxc>(L"MEVVTXC GET", L"45^^^PAIN|P^02/01/2026@10:15^OAK,KIT J|15\r\n", {},
        L"Initiated=02/01/2026*; Type=Pain; Provider=Oak, Kit J # The stored time of day, 10:15, is not sent.",
        L"45^81^P^02/01/2026^15");
    check<frmTxc>(
        L"MEVVTXC GET", L"",
        [](frmTxc& form) {
            form.datInit.clear();
            form.opt[0].click();
        },
        L"Initiated=03/15/2026 09:30; Type=Pain; Provider=Sorrel, Ada # The empty date is sent as the present date "
        L"and time.",
        L"^81^P^03/15/2026 09:30^71");
}

TEST_F(Summaries, OfRefusals)
{
    check<frmRefusal>(
        L"MEVREF GET", replies::Refusal,
        [](frmRefusal& form) {
            form.moveFocus(form.txtRefComment);
            form.txtRefComment.edit(L"said\r\n no"); // OK leaves the field first
        },
        L"Date Refused=03/10/2026; BLOOD PRESSURE (Measurements); Comment=said no*",
        L"8^MEASUREMENTS^14^12^03/10/2026^said no");
    host.session->reply(L"MEVREF REFLIST", L"9");
    check<frmRefusal>(
        L"MEVREF GET", replies::Refusal, [](frmRefusal& form) { form.lstRefusals.click(0); },
        L"Date Refused=03/10/2026; EKG*; Comment=Said No, twice", L"8^EKG^9^12^03/10/2026^Said No, twice");
}

TEST_F(Summaries, OfReproductiveHistory)
{
    check<frmRepHist>(
        L"MEVREP GET", replies::Reproductive, [](frmRepHist& form) { form.txNumRH[0].edit(L"4"); },
        L"G4P2LC1SA0TA0*; LMP=01/05/2026; Contraceptive Method=Oral Contraceptives; Date FP Began=12/01/2025; "
        L"Pregnant=Yes; Pregnant: Est. Delivery=10/12/2026; Determined by=Sonogram",
        L"12^G4P2LC1SA0TA0^01/05/2026^Oral Contraceptives^12/01/2025^1^10/12/2026^Sonogram");
    check<frmRepHist>(
        L"MEVREP GET", replies::Reproductive, [](frmRepHist& form) { form.chkPregnant.click(); },
        L"G3P2LC1SA0TA0; LMP=01/05/2026; Contraceptive Method=Oral Contraceptives; Date FP Began=12/01/2025; "
        L"Pregnant=No*; Pregnant: Est. Delivery=*; Determined by=* # Pregnant is not checked: the estimated delivery "
        L"and how it was determined are sent, but not saved.",
        L"12^G3P2LC1SA0TA0^01/05/2026^Oral Contraceptives^12/01/2025^0^10/12/2026^Sonogram");
    constexpr TextView NotSaved = L" # Pregnant is not checked: the estimated delivery and how it was determined are "
                                  L"sent, but not saved.";
    for (const auto& [estimate, delivery, isEstimated] :
        { std::tuple<TextView, TextView, TextView> { L"SONOGRAM", L"", L"*" }, { L"", L"10/12/2026", L"" } })
        check<frmRepHist>(
            L"MEVREP GET", L"G0P0LC0SA0TA0^^^^" + Text(estimate) + L"^" + Text(delivery),
            [](frmRepHist& form) { form.chkPregnant.setChecked(false); },
            L"G0P0LC0SA0TA0; LMP=; Contraceptive Method=; Date FP Began=; Pregnant=No*; Pregnant: Est. Delivery="
                + Text(isEstimated.empty() ? L"*" : L"") + L"; Determined by=" + Text(isEstimated) + Text(NotSaved),
            L"12^G0P0LC0SA0TA0^^^^0^" + Text(delivery) + L"^" + Text(estimate.empty() ? L"" : L"Sonogram"));
    check<frmRepHist>(L"MEVREP GET", L"-1^Not today.", {},
        L"G0P0LC0SA0TA0; LMP=; Contraceptive Method=; Date FP Began=; Pregnant=No; Pregnant: Est. Delivery=; "
        L"Determined by= # The record could not be read: these values replace what it holds.",
        L"12^G0P0LC0SA0TA0^^^^0^^");
}

TEST_F(Summaries, OfTheRegistry)
{
    host.session->reply(L"MEVVAST GETNOTE", L"Spacer checked.\r\nCall back.\r\n");
    constexpr TextView Dates = L"; Last Asthma Visit=01/02/2026; Calculated Date Due=04/05/2026; "
                               L"Next Appointment=03/20/2026";
    constexpr TextView Comment = L"Comments=Spacer checked. Call back.* # ";
    constexpr TextView OneLine = L" # The comment is sent as one line: its line breaks have become blanks.";
    check<frmAsthmaReg>(L"MEVVAST GETREG", replies::Registered, {},
        L"Status=Active" + Text(Dates) + L"; Case Manager=; " + Text(Comment)
            + L"The case manager was not looked up again: it is sent empty, and the server keeps Smith, John."
            + Text(OneLine),
        L"12^A^01/02/2026^04/05/2026^03/20/2026^^Spacer checked. Call back.");
    host.session->reply(L"MEVVAST GETNOTE", L"x\r\n"); // one line
    check<frmAsthmaReg>(L"MEVVAST GETREG", L"12^ACTIVE|A^01/02/2026^04/05/2026^03/20/2026^", {},
        L"Status=Active" + Text(Dates) + L"; Case Manager=; Comments=x", L"12^A^01/02/2026^04/05/2026^03/20/2026^^x");
    check<frmAsthmaReg>(
        L"MEVVAST GETREG", L"12^INACTIVE|I^01/02/2026^04/05/2026^03/20/2026^SMITH,JOHN|15",
        [](frmAsthmaReg& form) { form.txtPrv.edit(L""); },
        L"Status=Active*" + Text(Dates)
            + L"; Case Manager=; Comments=x # Saving makes the patient active in the "
              L"registry. # A case manager cannot be removed here: it is sent empty, and the server keeps Smith, John.",
        L"12^A^01/02/2026^04/05/2026^03/20/2026^^x");
}

TEST_F(Summaries, OfEmergencyVisits)
{
    constexpr TextView Start = L"Urgency=Urgent; Means of Arrival=POV; Other Means=; Entered ER by=Stretcher; "
                               L"Informant=Her aunt; Notified=Relative; Disposition=";
    check<frmER>(
        L"MEVVER GET", replies::Emergency, [](frmER& form) { form.optDisch[3].click(); },
        Text(Start)
            + L"AMA / Patient Left*; Other Disposition=; Departure Date=*; Left against Advice=11/20/2026 "
              L"23:50*; Discharge Condition=Stable; Transferred to= # The departure is sent as the time at which the "
              L"patient "
              L"left against advice.",
        L"45^81^U^S^POV^^R^Her aunt^1^^^3261120.235^Stable");
    constexpr TextView Transferred = L"45^^^^^^^^^TRANSFERRED|T^^^^^NORTH CLINIC|7;";
    constexpr TextView Empty = L"Urgency=; Means of Arrival=; Other Means=; Entered ER by=; Informant=; Notified=; ";
    constexpr TextView NoDeparture =
        L"Other Disposition=; Departure Date=; Left against Advice=; Discharge Condition=; ";
    check<frmER>(
        L"MEVVER GET", Text(Transferred) + L"AUTTLOC(\r\n", [](frmER& form) { form.optDisch[0].click(); },
        Text(Empty) + L"Disposition=Discharged*; " + Text(NoDeparture)
            + L"Transferred to=* # The place of the transfer, North Clinic, is dropped.",
        L"45^81^^^^^^^D^^^^");
    check<frmER>(L"MEVVER GET", Text(Transferred) + L"AUTTVNDR(\r\n", {},
        Text(Empty) + L"Disposition=Transferred; " + Text(NoDeparture) + L"Transferred to=North Clinic",
        L"45^81^^^^^^^T^^^^^VEN.`7");
    check<frmER>(L"MEVVER GET", Text(Transferred) + L"DIC(\r\n", {},
        Text(Empty) + L"Disposition=Transferred; " + Text(NoDeparture)
            + L"Transferred to=North Clinic* # The place of the transfer is sent as a facility, because no option is "
              L"chosen.",
        L"45^81^^^^^^^T^^^^^LOC.`7");
    check<frmER>(
        L"MEVVER GET", L"45^^^^Other|O^by raft\r\n", [](frmER& form) { form.optDisch[3].click(); },
        L"Urgency=; Means of Arrival=Other; Other Means=by raft; Entered ER by=; Informant=; Notified=; "
        L"Disposition=AMA / Patient Left*; "
            + Text(NoDeparture) + L"Transferred to=",
        L"45^81^^^O^by raft^^^1^^^^");
    check<frmER>(L"MEVVER GET", L"45^^^^X|X^by raft^^^^^on foot\r\n", {},
        L"Urgency=; Means of Arrival=*; Other Means=*; Entered ER by=; Informant=; Notified=; Disposition=; Other "
        L"Disposition=*; Departure Date=; Left against Advice=; Discharge Condition=; Transferred to= # Means of "
        L"Arrival: the stored \"X\" is not among the choices, so it is sent empty. # The other means of arrival is not "
        L"sent, because its option is not chosen. # The other disposition is not sent, because its option is not "
        L"chosen.",
        L"45^81^^^^^^^^^^^");
}

// While the user replaces a name, leaving the field will drop its number.
TEST_F(Summaries, DropANameThatIsBeingReplaced)
{
    host.session->reply(L"MEVBMSR GET", replies::Birth);
    frmPediatric form(shared);
    form.Form_Activate();
    form.moveFocus(form.txtPat);
    form.txtPat.edit(L"");
    EXPECT_TRUE(saidToBeSaved(form).ends_with(L"Mother=*"));
}

// The captions are the list's, in its order; forms may send more than the list shows.
TEST_F(Summaries, HaveTheCaptionsOfTheList)
{
    using enum RecordTypeNumber;
    frmRepHist history(shared);
    frmPediatric birth(shared);
    frmElder functions(shared);
    frmAsthma asthma(shared);
    frmTxc contract(shared);
    frmER emergency(shared);
    for (const auto& [type, form] : std::initializer_list<std::pair<RecordTypeNumber, Form*>> {
             { Reproductive, &history }, { BirthMeasurements, &birth }, { FunctionalStatus, &functions },
             { Asthma, &asthma }, { TreatmentContract, &contract }, { EmergencyRoom, &emergency } }) {
        const SaveSummary summary = form->summary();
        auto part = summary.parts.begin();
        for (const SummaryField& field : recordType(type).fields) {
            part =
                std::find_if(part, summary.parts.end(), [&](const auto& own) { return own.caption == field.caption; });
            ASSERT_NE(part, summary.parts.end()) << narrow(field.caption);
        }
    }
}

TEST_F(Summaries, RefusalsNameTheirField)
{
    Asked<frmPediatric> birth(shared);
    birth.txt[2].edit(L"6m");
    birth.txt[3].edit(L"16M");
    Asked<frmRepHist> history(shared);
    history.datFP.setValue(L"12/01/1700");
    Asked<frmAsthma> asthma(shared);
    asthma.txt[0].edit(L"49.5");
    asthma.txt[1].edit(L"49");
    Asked<frmAsthmaReg> registry(shared);
    registry.dat[1].setValue(L"soon");
    Asked<frmRefusal> refusal(shared);
    Asked<frmTxc> contract(shared);
    Asked<frmER> emergency(shared);
    Asked<frmElder> functions(shared);
    const auto check = [](auto& form, std::initializer_list<std::pair<TextView, Control*>> sentences) {
        for (const auto& [sentence, field] : sentences)
            EXPECT_EQ(form.fieldOf(sentence), field) << narrow(sentence);
        for (const TextView sentence : { L"You hold neither the PROVIDER key nor the MEVZ ER EDIT key.",
                 L"The record 45 does not exist any more.", L"The visit is not known.", L"" })
            EXPECT_EQ(form.fieldOf(sentence), nullptr) << narrow(sentence);
    };
    check(birth,
        { { L"The birth weight 40 cannot be read.", &birth.txt[0] }, { L"The age 16M cannot be read.", &birth.txt[3] },
            { L"The age 6M cannot be read.", &birth.txt[2] },
            { L"The patient cannot be the mother or guardian.", &birth.txtPat } });
    check(history,
        { { L"12/01/1700 is outside the years 1800 to 2699.", &history.datFP },
            { L"The last menstrual period cannot be in the future.", &history.datLMP },
            { L"Enter the estimated delivery, or choose how it was determined; \"Unknown Method\" will do.",
                &history.datDelivery },
            { L"The way of determining the delivery date is not known.", &history.cboEstMethod } });
    check(asthma,
        { { L"The lung function value 49.5 is not possible.", &asthma.txt[0] },
            { L"The lung function value 49 is not possible.", &asthma.txt[1] },
            { L"The severity is not known.", &asthma.cboSeverity } });
    check(registry,
        { { L"soon is not a date.", &registry.dat[1] }, { L"The case manager is not known.", &registry.txtPrv },
            { L"The comment is longer than 4,000 characters.", &registry.txtComments } });
    check(refusal,
        { { L"The refused item is not known.", &refusal.txtItem },
            { L"The refusal cannot be in the future.", &refusal.datRefused }, { L"The refusal is locked.", nullptr },
            { L"The comment is longer than 200 characters.", &refusal.txtRefComment } });
    check(contract,
        { { L"The provider is not known.", &contract.txtPrv },
            { L"The contract cannot begin in the future.", &contract.datInit } });
    check(emergency,
        { { L"The other disposition is longer than 200 characters.", &emergency.txtDispOth },
            { L"The departure 3261399 is not a date.", &emergency.datDepart },
            { L"The place of the transfer is not known.", &emergency.txtLoc } });
    check(functions, { { L"The answer X is not known.", nullptr } });
}

}
