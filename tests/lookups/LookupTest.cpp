#include "lookups/frmLookup.h"
#include "lookups/frmLookupImm.h"
#include "tests/support/FormFixture.h"

namespace health::test {

class Lookup : public FormFixture<frmLookup> {
protected:
    Text callOf(int table, TextView text, TextView screen = L"*")
    {
        frmLookup own(shared);
        host.transcript.clear();
        own.RunQuery(table, text, true, screen);
        const auto calls = host.calls();
        return calls.empty() ? Text() : calls.back();
    }

    void inDialog(auto act)
    {
        host.desktop.inForms.push_back([act](Form&) { act(); });
    }

    static constexpr TextView TwoProviders = L"7^X^SMITH,ANNA\r\n8^Y^SMITH,BOB\r\n";
};

TEST_F(Lookup, ParameterHasNinePieces)
{
    for (const auto& [table, text, screen, call] : { std::tuple<int, TextView, TextView, TextView> { 24, L"muñ", L"*",
                                                         L"list MEVUTL DICLKUP(2^MUÑ^^^250^^^^.01;.02;.03;.09)" },
             { 11, L"a", L"*", L"list MEVUTL DICLKUP(200^A^^^250^^I $$ACTPRV(Y)^^.01)" },
             { 3, L"  a b ", L"*", L"list MEVUTL DICLKUP(9999999.07^A B^^^250^^^^.01;.02)" },
             { 18, L"", L"*", L"list MEVUTL DICLKUP(9999999.88^^^^250^B~C^^^.01;.02)" },
             { 12, L"j45", L"*", L"list MEVICDLK ICDLKUP(^J45^^^250^^^^.01)" },
             { 1, L"", L"I 1", L"list MEVUTL DICLKUP(9999999.28^^^^250^^I 1^^.01)" },
             { 0, L"25 - Significant - x", L"*", L"list MEVUTL DICLKUP(9999999.14^25^^^250^^.07'=1^^.01;1.14)" },
             { 0, L"a-b^c\x01", L"*", L"list MEVUTL DICLKUP(9999999.14^A-BC^^^250^^.07'=1^^.01;1.14)" },
             { 11, L"", L"*", L"" }, { 24, L"", L"*", L"" } }) { // no empty search of providers and patients
        EXPECT_EQ(callOf(table, text, screen), call);
        EXPECT_LINES(L"show", L"show frmLookup");
    }
}

TEST_F(Lookup, ColumnSourcesAreClamped)
{
    const auto odd = lookupColumns({ .name = L"", .file = L"", .columns = L"A:0:1E99^B:0:-7^C:0:x" });
    EXPECT_EQ(odd[0].source, 1000);
    EXPECT_EQ(odd[1].source, 0);
    EXPECT_EQ(odd[2].source, 0);
    EXPECT_THROW(lookupTable(25), std::out_of_range);
}

TEST_F(Lookup, NamesWithACode)
{
    for (const auto& [table, line, returnedAtOnce, selected] :
        { std::tuple<int, TextView, TextView, TextView> { 12, L"ASTHMA^5^^J45.20\r\n", L"J45.20 - Asthma", L"Asthma" },
            { 18, L"3^25^^SEPARATE\r\n", L"SEPARATE", L"25 - SEPARATE" },
            { 14, L"4^X^CLINIC^4001\r\n", L"CLINIC", L"CLINIC" } }) {
        reply(table == 12 ? L"MEVICDLK ICDLKUP" : L"MEVUTL DICLKUP", line);
        frmLookup atOnce(shared);
        EXPECT_TRUE(atOnce.RunQuery(table, L"x", true, L"*"));
        EXPECT_EQ(atOnce.m_sName, returnedAtOnce) << table;
        frmLookup shown(shared);
        inDialog([&] {
            EXPECT_EQ(shown.activeControl(), &shown.txtName); // fewer than two rows
            shown.press(shown.cmdSelect);
        });
        EXPECT_TRUE(shown.RunQuery(table, L"x", false, L"*"));
        EXPECT_EQ(shown.m_sName, selected) << table;
    }
}

TEST_F(Lookup, UserChoosesOrCancels)
{
    reply(L"MEVUTL DICLKUP", TwoProviders);
    inDialog([&] {
        EXPECT_EQ(form.caption(), L"Lookup Provider");
        EXPECT_EQ(form.activeControl(), &form.fgResults);
        EXPECT_EQ(form.defaultButton(), &form.cmdSelect);
        form.fgResults.choose(1);
        form.fgResults.doubleClick(1);
    });
    EXPECT_TRUE(form.RunQuery(11, L"smith", true, L"*"));
    EXPECT_EQ(form.m_sRecId, L"8");

    frmLookup cancelled(shared);
    inDialog([&] { cancelled.press(cancelled.cmdCancel); });
    EXPECT_FALSE(cancelled.RunQuery(11, L"smith", true, L"*"));
    frmLookup closed(shared); // by closing the window
    EXPECT_FALSE(closed.RunQuery(11, L"smith", true, L"*"));
    EXPECT_EQ(closed.m_sRecId, L"");
}

TEST_F(Lookup, RefusedSearchShowsNoDialog)
{
    reply(L"MEVUTL DICLKUP", L"-1^This screen is not known.");
    EXPECT_FALSE(form.RunQuery(11, L"smith", true, L"I 1"));
    EXPECT_BOXES(L"box [Error] This screen is not known.");
    EXPECT_TRUE(host.lines(L"show").empty());
    EXPECT_FALSE(form.fgResults.isVisible());
}

TEST_F(Lookup, SearchingAgainInTheDialog)
{
    reply(L"MEVUTL DICLKUP", TwoProviders);
    inDialog([&] {
        form.txtName.edit(L" ");
        form.press(form.cmdSearch);
        EXPECT_BOXES(L"box [Nothing to Search] You must first enter some text to be searched.");
        EXPECT_EQ(form.activeControl(), &form.txtName);
        EXPECT_EQ(form.defaultButton(), &form.cmdSearch);

        reply(L"MEVUTL DICLKUP", L"9^X^JONES,CAY\r\n");
        form.txtName.edit(L"jones");
        form.press(form.cmdSearch);
        EXPECT_TRUE(form.isOpen()); // stays open even for a single match
        EXPECT_EQ(form.fgResults.rowCount(), 1);
        EXPECT_EQ(form.activeControl(), &form.fgResults);
        EXPECT_EQ(
            host.calls().back(), L"list MEVUTL DICLKUP(200^JONES^^^250^^I OWN^^.01)"); // the caller's screen stays

        reply(L"MEVUTL DICLKUP", L"-1");
        form.press(form.cmdSearch);
        EXPECT_EQ(host.boxes().back(), L"box [Find Record] Search found no matches.");
        EXPECT_FALSE(form.cmdSelect.isEnabled());
        EXPECT_EQ(form.fgResults.rowCount(), 0);
        EXPECT_EQ(form.activeControl(), &form.txtName);

        reply(L"MEVUTL DICLKUP", L"");
        form.press(form.cmdSearch);
        EXPECT_EQ(form.fgResults.hint(), L"No matches.");
        EXPECT_EQ(form.activeControl(), &form.txtName);
        form.press(form.cmdSelect); // enabled again, but there is no row to choose
        EXPECT_EQ(form.activeControl(), &form.cmdSelect);
        EXPECT_EQ(host.boxes().size(), 2u);
        EXPECT_TRUE(form.isOpen());
    });
    EXPECT_FALSE(form.RunQuery(11, L"smith", true, L"I OWN"));
    EXPECT_EQ(host.lines(L"show").size(), 1u);
}

TEST_F(Lookup, VaccinesWithALotNumber)
{
    frmLookupImm vaccines(shared);
    reply(L"MEVUTL DICLKUP", L"1^X^INFLUENZA^^\r\n2^X^TETANUS^^\r\n");
    inDialog([&] {
        EXPECT_TRUE(vaccines.opt[0].isChosen());
        vaccines.opt[1].click();
        EXPECT_FALSE(vaccines.opt[0].isChosen());
        vaccines.opt[0].click();
        vaccines.press(vaccines.cmdSelect);
    });
    EXPECT_TRUE(vaccines.RunQuery(L""));
    EXPECT_EQ(vaccines.m_sName, L"INFLUENZA");
    const Text all = L"list MEVUTL DICLKUP(9999999.14^^^^250^^.07'=1^^.01;1.14)";
    EXPECT_CALLS(all,
        L"list MEVUTL DICLKUP(9999999.14^^^^250^^I $D(~AUTTIML(\"C\",Y)),$P($G(~AUTTIMM(Y,0)),U,7)'=1^^.01;1.14)", all);
}

TEST_F(Lookup, GarbledRepliesAndToolTips)
{
    reply(L"MEVUTL DICLKUP", L"7\r\n^\r\n8^^A^B^C^D\r\nunterminated");
    inDialog([&] {
        EXPECT_EQ(form.fgResults.rowCount(), 3);
        EXPECT_EQ(form.fgResults.text(0, 2), L"");
        EXPECT_EQ(form.fgResults.text(2, 2), L"A");
        form.fgResults.moveMouse(2, 2);
        EXPECT_EQ(form.fgResults.toolTip(), L"A");
        form.fgResults.moveMouse(-1, -1);
        EXPECT_EQ(form.fgResults.toolTip(), L"");
    });
    form.RunQuery(14, L"x", true, L"*");
    EXPECT_LINES(L"show|box", L"show frmLookup");
}

}
