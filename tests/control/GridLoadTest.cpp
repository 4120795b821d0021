#include "tests/support/ControlFixture.h"

#include <algorithm>

namespace health::test {

class GridLoad : public ControlFixture {
protected:
    Text summaryOf(TextView call, TextView record, TextView sex = L"F", TextView age = L"3")
    {
        reply(call, record);
        commitPatient(12, sex, age);
        reply(call, L"");
        return control.fgData.rowCount() == 0 ? Text() : Text(control.fgData.text(0, GridColumn::Summary));
    }

    // The numbers of the types that can be added.
    Text typesOffered()
    {
        Text types;
        for (int index = 0; index < control.cboType.count(); ++index)
            types += std::to_wstring(control.cboType.itemData(index));
        return types;
    }
};

TEST_F(GridLoad, CallsInTheirFixedOrderAndAsAnnounced)
{
    open(0);
    const Transcript calls { L"call MEVREP GET(12^^1)", L"call MEVBMSR GET(12)", L"list MEVVIF GET(12)",
        L"list MEVVELD GET(12)", L"list MEVVAST GET(12)", L"list MEVVTXC GET(12)", L"list MEVREF GET(12)" };
    for (const auto& [sex, age, left] : { std::tuple<TextView, TextView, std::set<int>> { L"F", L"6", {} },
             { L"F", L"8", { 1, 2 } }, { L"M", L"6", { 0 } }, { L"M", L"7", { 0, 1, 2 } } }) {
        Transcript expected;
        for (std::size_t i = 0; i < calls.size(); ++i) {
            if (!left.contains(static_cast<int>(i)))
                expected.push_back(calls[i]);
        }
        host.transcript.clear();
        commitPatient(12, sex, age);
        EXPECT_EQ(host.calls(), expected) << narrow(sex) << narrow(age);
        EXPECT_EQ(host.session->expected, expected);
    }
}

TEST_F(GridLoad, OfferedTypesDependOnSexAndAge)
{
    open(0);
    for (const auto& [sex, age, types] : { std::tuple<TextView, TextView, TextView> { L"F", L"4", L"0534276" },
             { L"F", L"5", L"053476" }, { L"F", L"8", L"05476" }, { L"F", L"9 YRS", L"054716" },
             { L"M", L"40", L"05476" }, { L"f", L"40", L"05476" } }) {
        commitPatient(12, sex, age);
        EXPECT_EQ(typesOffered(), types) << narrow(sex) << narrow(age);
        EXPECT_EQ(control.cboType.text(), L" To add, select a form...");
    }
    // A reload leaves the user's choice alone.
    control.cboType.choose(2);
    push(L"REFRESH");
    EXPECT_EQ(control.cboType.listIndex(), 2);
}

TEST_F(GridLoad, RowOfEachType)
{
    const std::tuple<TextView, TextView, TextView, TextView> cases[] = {
        { L"MEVREP GET", L"g3p2lc1sa0ta0^01/05/2026^ORAL CONTRACEPTIVES^12/01/2025^SONOGRAM^10/12/2026",
            L"Reproductive|G3P2LC1SA0TA0; LMP=01/05/2026; Contraceptive Method=Oral Contraceptives; Pregnant: Est. "
            L"Delivery=10/12/2026; Determined by=Sonogram|12|||1",
            L"REPR" },
        { L"MEVBMSR GET", L"7^2^3.2^3231^^^^^^1^6M^2W^5M^SMITH,ANNA|44",
            L"Birth Measurements|Birth Weight=7 lbs 2 ozs (3.2 kgs) ; Birth Order=1; Formula Started=6m; Breast "
            L"Stopped=2w; Solids Started=5m; Mother=Smith,Anna|12|||3",
            L"BMSR" },
        { L"MEVVIF GET", replies::Feeding, L"Infant Feeding|03/10/2026 14:30: 1/2 Breast & 1/2 Formula|45|812|1|2",
            L"IF^45" },
        { L"MEVVELD GET", L"9^^3260310|81^INDEPENDENT|I^NEEDS HELP^R^TOTALLY DEPENDENT^F^O^A^B^C^D^E^T^DECLINE^NO\r\n",
            L"Functional Status|03/10/2026: Status Change=Decline; Caregiver=No; Toileting=Independent; Bathing=Needs "
            L"Help; Dressing=R; Transfers=Totally Dependent; Feeding=F; Continence=O; Finances=A; Cooking=B; "
            L"Shopping=C; Chores=D; Meds=E; Transportation=T|9|81||4",
            L"FS^9" },
        { L"MEVVAST GET", replies::Asthma,
            L"Asthma Status|03/10/2026: Severity=Mild Persistent; FEV=90; FEF=80; PEF=450; ETS=Yes; Particulates=No; "
            L"Dust Mites=Yes; Mgt. Plan=No|3|81||5",
            L"AS^3" },
        { L"MEVVTXC GET", replies::Contract,
            L"Tx Contract|01/05/2026 10:00: Initiated=02/01/2026; Type=Pain; Provider=Oak,Kit J|45|81||6", L"TXC^45" },
        { L"MEVREF GET", replies::Refusal,
            L"Refusal|03/10/2026: BLOOD PRESSURE (Measurements); Comment=Said No, twice|8||1|7", L"REF^8" },
        { L"MEVREF GET", L"9^^3260310|81^LAB^2^GLUCOSE^^^3260310|81\r\n", // a refusal has no visit
            L"Refusal|03/10/2026: GLUCOSE (Lab)|9|||7", L"REF^9" },
    };
    open(0);
    for (const auto& [call, reply, line, key] : cases) {
        host.session->reply(call, reply);
        commitPatient(12, L"F", L"3");
        ASSERT_EQ(control.fgData.rowCount(), 1) << narrow(call);
        EXPECT_EQ(row(0), line);
        EXPECT_EQ(control.fgData.rowData(0), key);
        host.session->reply(call, L"");
    }
}

TEST_F(GridLoad, SummariesOfIncompleteAndOddRecords)
{
    open(0);
    for (const auto& [call, reply, summary] : {
             std::tuple<TextView, TextView, TextView> { L"MEVREP GET", L"^", L"" },
             { L"MEVREP GET", L"^^IUD", L"Contraceptive Method=Iud" }, // an empty first piece adds no "; "
             { L"MEVBMSR GET", L"1^1^1", L"Birth Weight=1 lb 1 oz (1 kg) " },
             { L"MEVBMSR GET", L"^0", L"Birth Weight= lbs 0 ozs " },
             { L"MEVBMSR GET", L"1.0^^^^^^^^^^^^^MUÑOZ, ÁNGEL|1", L"Birth Weight=1.0 lbs ; Mother=Muñoz, Ángel" },
             { L"MEVREF GET", L"1^^^EKG^7^EKG\r\n", L"EKG" },
             { L"MEVREF GET", L"1^^^PAP SMEAR^7\r\n", L"PAP SMEAR" },
             { L"MEVREF GET", L"1^^^EKG,STAT CARE^7^12 LEAD\r\n", L"12 LEAD (Ekg,stat Care)" },
             { L"MEVREF GET", L"1^^^^^^^^^^^only a comment|x\r\n", L"Comment=only a comment" },
             { L"MEVREF GET", L"1^^^LAB^2^GLUCOSE^^^no date\r\n", L"GLUCOSE (Lab)" },
             { L"MEVVELD GET", L"1^^3260310^|only a code\r\n", L"03/10/2026: " },
         })
        EXPECT_EQ(summaryOf(call, reply), summary);
}

TEST_F(GridLoad, GarbledRepliesAddWhatCanBeRead)
{
    open(0);
    Text wide = L"1^^3260310";
    for (int i = 0; i < 1000; ++i)
        wide += L"^x|";
    EXPECT_TRUE(summaryOf(L"MEVVAST GET", wide + L"\r\n").ends_with(L"; Mgt. Plan=X"));
    for (const auto& [list, rows] : { std::pair<TextView, std::size_t> { L"", 0 }, { L"no line end", 0 },
             { L"1^^^A\r\n2^^^B", 1 }, { L"\r\n", 1 }, { L"1^^^A\r2^^^B\r\n", 1 }, { L"1\r\n2\r\n3\r\n", 3 } }) {
        reply(L"MEVVELD GET", list);
        commitPatient(12, L"M");
        EXPECT_EQ(summaries().size(), rows) << narrow(list);
        EXPECT_EQ(control.fgData.hint(), rows == 0 ? L"No personal health records." : L"");
    }
    EXPECT_TRUE(host.boxes().empty());
}

TEST_F(GridLoad, FailedCallsAreNamedAndTheOtherTypesListed)
{
    reply(L"MEVREP GET", L"-1^Reproductive data are locked.");
    reply(L"MEVVELD GET", L"-2\r\n");
    reply(L"MEVVAST GET", L"1^^^MILD\r\n");
    host.session->failCall(L"MEVVTXC GET", L"No such routine.");
    host.desktop.whileBoxIsOpen = [this] { EXPECT_EQ(control.fgData.hint(), L"Loading ..."); };
    open(12);
    EXPECT_EQ(summaries(), Transcript { L"Severity=Mild" });
    EXPECT_EQ(control.fgData.hint(), L"Could not be read: Reproductive, Functional Status, Tx Contract.");
    EXPECT_LINES(L"box|status", L"status Loading Personal Health Data", L"box [Error] Reproductive data are locked.",
        L"status ", L"status ", L"box [System Error] Error in remote procedure call: MEVVTXC GET\r\nNo such routine.",
        L"status ");
    commitPatient(0);
    EXPECT_EQ(control.fgData.hint(), L"");
}

TEST_F(GridLoad, LostServerStopsTheCallsAndEmptiesTheList)
{
    reply(L"MEVREP GET", L"G1P1");
    open(12);
    for (const auto& [name, calls] : { std::pair<TextView, std::size_t> { L"MEVREP GET", 1 }, { L"MEVVAST GET", 3 } }) {
        host.session->losesServerAt = name;
        host.transcript.clear();
        push(L"REFRESH");
        EXPECT_EQ(host.calls().size(), calls);
        EXPECT_BOXES(L"box [System Error] Error in remote procedure call: " + Text(name) + L"\r\nThe server is gone.");
        EXPECT_EQ(control.fgData.rowCount(), 0);
        EXPECT_EQ(control.fgData.hint(), L"The server cannot be reached. The records were not read.");
    }
}

TEST_F(GridLoad, FailureLeavesNoPartialList)
{
    reply(L"MEVVELD GET", L"5^^^A\r\n");
    open(12);
    // Failures before the rows and after them, which no call wrapper catches.
    for (bool* const fails : { &host.patient->fails, &host.encounter->fails }) {
        host.transcript.clear();
        *fails = true;
        control.fgData.choose(0);
        push(L"REFRESH");
        const Transcript boxes = host.boxes();
        EXPECT_EQ(std::ranges::count(boxes, failureBox(L"kalmevRepHistCtrl at LoadGrid", L"The host is gone.")), 1);
        EXPECT_LE(boxes.size(), 3u); // not one for each row and field
        EXPECT_EQ(summaries(), Transcript { L"Patient Not Selected" });
        EXPECT_EQ(control.fgData.row(), -1);
        EXPECT_TRUE(control.fgData.isDrawing());
        *fails = false;
        push(L"VXR.12.VELD"); // still subscribed
        EXPECT_EQ(summaries(), Transcript { L"Toileting=A" });
    }
}

}
