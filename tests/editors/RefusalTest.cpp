#include "editors/frmRefusal.h"
#include "lookups/frmLookupImm.h"
#include "tests/support/FormFixture.h"

namespace health::test {

class Refusals : public FormFixture<frmRefusal> {
protected:
    int rowOf(TextView type)
    {
        int row = 0;
        while (row < form.lstRefusals.count() && form.lstRefusals.itemText(row) != type)
            ++row;
        return row;
    }
    void check(TextView type)
    {
        form.moveFocus(form.lstRefusals);
        form.lstRefusals.click(rowOf(type));
    }
    Text item() { return form.lblItem.caption() + L": " + form.txtItem.text() + L"|" + form.txtItem.tag(); }
};

TEST_F(Refusals, NewRefusalFromTypeToSave)
{
    reply(L"MEVREF REFLIST", L"9");
    host.session->reply(L"MEVREF REFLIST", L"EKG", L"-1^There is no such item.");
    open();
    EXPECT_EQ(form.caption() + form.cmdOK.caption() + form.datRefused.value(), L"Enter Refusal&Add03/15/2026");
    EXPECT_TRUE(host.calls().empty());
    check(L"PAP Smear"); // the types of one item fill it in
    EXPECT_EQ(item(), L"&PAP Smear: PAP SMEAR|9");
    EXPECT_EQ(form.activeControl(), &form.txtItem);
    form.moveFocus(form.txtRefComment); // leaving the field searches nothing
    check(L"EKG");
    EXPECT_EQ(item(), L"&EKG: EKG|");
    EXPECT_BOXES(L"box [Error] There is no such item.");
    EXPECT_CALLS(L"call MEVREF REFLIST(PAP Smear)", L"call MEVREF REFLIST(EKG)");
    check(L"Exam");
    check(L"Measurement");
    EXPECT_TRUE(form.lstRefusals.isChecked(rowOf(L"Measurement")) && !form.lstRefusals.isChecked(rowOf(L"Exam")));
    EXPECT_EQ(item(), L"&Measurement: |");
    host.transcript.clear();
    reply(L"MEVUTL DICLKUP", L"7^^WT^WEIGHT\r\n");
    typeInto(form.txtItem, L"wt");
    typeInto(form.txtRefComment, L"Said ^no^");
    form.press(form.cmdOK);
    EXPECT_CALLS(L"list MEVUTL DICLKUP(9999999.07^WT^^^250^^^^.01;.02)",
        L"call MEVREF SET(^MEASUREMENTS^7^12^03/15/2026^Said  no )");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(Refusals, StoredRefusalCanBeSavedUntouched)
{
    for (const auto& [type, saved] : { std::pair<TextView, TextView> { L"EKG", L"EKG" },
             { L"MEASUREMENTS", L"MEASUREMENTS" }, { L"Medication/Drug", L"MEDICATION/DRUG" } }) {
        host.transcript.clear();
        reply(L"MEVREF GET", L"5^^^" + Text(type) + L"^3^THIRD ITEM^^^3260310.0915^^^Said no\r\n");
        frmRefusal own(shared);
        own.m_sRefusalIen = L"5";
        open(own);
        own.Form_Activate(); // activated again by a box
        EXPECT_EQ(own.caption() + own.cmdOK.caption(), L"Edit Refusal&Save");
        own.moveFocus(own.txtItem); // entering and leaving the field searches nothing
        own.press(own.cmdOK);
        EXPECT_CALLS(
            L"list MEVREF GET(12^5)", L"call MEVREF SET(5^" + Text(saved) + L"^3^12^03/10/2026 09:15^Said no)");
        EXPECT_TRUE(host.boxes().empty());
    }
}

TEST_F(Refusals, ItemFromAnotherTypesTableCountsAsMissing)
{
    open();
    reply(L"MEVREF REFLIST", L"9");
    reply(L"MEVUTL DICLKUP", L"3^^FOUND\r\n");
    for (const auto& [type, searched, parameter] : { std::tuple<TextView, TextView, TextView> { L"Exam", L"Lab", L"" },
             { L"Lab", L"Exam", L"" }, { L"EKG", L"", L"(^EKG^9^12^03/15/2026^)" },
             { L"PAP Smear", L"Lab", L"(^PAP SMEAR^3^12^03/15/2026^)" } }) { // these two share a table
        form.open();
        check(type);
        if (!searched.empty()) {
            form.lstRefusals.choose(rowOf(searched));
            typeInto(form.txtItem, L"f");
            form.moveFocus(form.lstRefusals);
            form.lstRefusals.choose(rowOf(type));
        }
        host.transcript.clear();
        form.press(form.cmdOK);
        EXPECT_EQ(
            host.calls(), parameter.empty() ? Transcript {} : Transcript { L"call MEVREF SET" + Text(parameter) });
        EXPECT_EQ(host.boxes().size(), parameter.empty() ? 1u : 0u) << narrow(type);
    }
}

TEST_F(Refusals, MissingEntriesAreReportedInOrder)
{
    open();
    form.press(form.cmdOK);
    EXPECT_EQ(form.activeControl(), &form.lstRefusals);
    form.lstRefusals.setListIndex(1);
    form.press(form.cmdOK);
    EXPECT_EQ(form.activeControl(), &form.lstRefusals);
    check(L"Skin Test");
    form.press(form.cmdOK);
    EXPECT_EQ(form.activeControl(), &form.txtItem);
    const auto missing = [](const Text& title, const Text& action) {
        return L"box [" + title + L" not Selected] You must first " + action
            + L" that you wish to add for this patient.";
    };
    EXPECT_LINES(L"box|call", missing(L"Refusal Type", L"select the refusal type"),
        missing(L"Refusal Type", L"click the checkbox for the refusal type"),
        L"box [Item Not Selected] You must first select the Skin Test type that you wish to add for this patient.");
    EXPECT_EQ(host.desktop.styles, (std::vector { 48, 48, 48 }));
}

TEST_F(Refusals, ItemNeedsATypeFirst)
{
    form.m_sRefusalIen = L"5";
    reply(L"MEVREF GET", L"5^^^FORMER TYPE^3^THIRD ITEM^^^no date\r\n");
    open();
    EXPECT_EQ(item() + form.datRefused.value(), L"Refusal &Item: THIRD ITEM|3no date"); // shown without a warning
    const Text warning = L"box [Type Not Selected] You must first select a refusal type from the above list.";
    form.moveFocus(form.txtItem);
    form.txtItem.edit(L"x");
    EXPECT_BOXES(warning); // once, although clearing changes the text again
    EXPECT_EQ(form.txtItem.text(), L"");
    EXPECT_EQ(form.activeControl(), &form.lstRefusals);
    form.press(form.cmdItem);
    EXPECT_BOXES(warning, warning);
    EXPECT_EQ(form.activeControl(), &form.lstRefusals);
    check(L"EKG");
    EXPECT_EQ(host.calls().back(), L"call MEVREF REFLIST(EKG)");
}

TEST_F(Refusals, CancelledLookupClearsTheItem)
{
    open();
    check(L"Immunization");
    reply(L"MEVUTL DICLKUP", L"1^^TETANUS\r\n");
    typeInto(form.txtItem, L"tet");
    form.moveFocus(form.txtRefComment);
    EXPECT_EQ(item(), L"&Immunization: TETANUS|1");
    form.moveFocus(form.txtItem);
    reply(L"MEVUTL DICLKUP", L"1^^A\r\n2^^B\r\n");
    host.desktop.inForms.push_back([](Form& opened) { // the vaccines have a dialog of their own
        opened.press(dynamic_cast<frmLookupImm&>(opened).cmdCancel);
    });
    form.press(form.cmdItem);
    EXPECT_EQ(item(), L"&Immunization: |");
    check(L"Exam");
    typeInto(form.txtItem, L"x");
    form.press(form.cmdItem); // the window is closed
    EXPECT_EQ(item(), L"&Exam: |");
}

TEST_F(Refusals, Dates)
{
    open();
    for (const TextView date : { L"T+1", L"soon" }) {
        enterDate(form.datRefused, date);
        EXPECT_EQ(form.datRefused.value(), L"03/15/2026");
    }
    enterDate(form.datRefused, L"03/15/2026 23:59"); // later today is today
    EXPECT_EQ(form.datRefused.value(), L"03/15/2026");
    enterDate(form.datRefused, L"T-4000");
    EXPECT_BOXES(
        L"box [Invalid Historical Date] The date cannot be in the future.", L"box [Error] Invalid date format.");
    enterDate(form.datRefused, L"");
    form.moveFocus(form.cmdCancel);
    EXPECT_EQ(form.datRefused.value() + form.datRefused.note(), L"");
    form.moveFocus(form.txtRefComment);
    EXPECT_EQ(form.datRefused.value() + form.datRefused.note(), L"03/15/2026A refusal has a date: this is today's.");
    enterDate(form.datRefused, L"");
    form.press(form.cmdOK); // shows the new date first
    EXPECT_EQ(host.boxes().size(), 2u);
}

TEST_F(Refusals, CommentOfTwoTo200Characters)
{
    open();
    const Text longest(200, L'x');
    for (const auto& [typed, kept, box] : { std::tuple<Text, Text, TextView> { L"ab", L"ab", L"" },
             { longest + L"\r\n", longest, L"" }, { L"", L"", L"" }, { L"one\r\ntwo", L"onetwo", L"" },
             { L"a\r\n", L"a\r\n", L"box [Comment Too Short] Comment must be longer than 1 character." },
             { longest + L"x", longest + L"x",
                 L"box [Comment Too Long] Comment cannot be longer than 200 characters." } }) {
        form.moveFocus(form.txtRefComment);
        form.txtRefComment.edit(typed);
        host.transcript.clear();
        EXPECT_EQ(form.moveFocus(form.datRefused), box.empty()) << narrow(typed);
        EXPECT_EQ(form.txtRefComment.text(), kept);
        EXPECT_EQ(host.boxes(), box.empty() ? Transcript {} : Transcript { Text(box) });
    }
}

}
