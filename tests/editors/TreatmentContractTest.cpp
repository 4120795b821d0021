#include "editors/frmTxc.h"
#include "tests/support/FormFixture.h"

namespace health::test {

class TreatmentContract : public FormFixture<frmTxc> {
protected:
    // Type, date and provider as the form shows them.
    static Text shown(frmTxc& form)
    {
        return std::to_wstring(form.opt.chosen()) + L" " + form.datInit.value() + L" " + form.txtPrv.text() + L" "
            + form.txtPrv.tag();
    }
};

TEST_F(TreatmentContract, NewContractHasTodayAndTheUserAndNeedsItsType)
{
    form.m_sVisit = L"81";
    open();
    EXPECT_EQ(form.caption(), L"Add Treatment Contract Record");
    EXPECT_EQ(shown(form), L"-1 03/15/2026 SORREL,ADA 71");
    form.press(form.cmdAdd);
    EXPECT_BOXES(L"box [Type Missing] You must select the type of contract, PAIN or MENTAL HEALTH.");
    EXPECT_EQ(host.desktop.styles, std::vector { 48 });
    EXPECT_EQ(form.activeControl(), &form.opt[0]);
    form.opt[1].click();
    form.opt[0].click();
    EXPECT_FALSE(form.opt[1].isChosen());
    form.press(form.cmdAdd);
    EXPECT_CALLS(L"call MEVVTXC SET(^81^P^03/15/2026^71)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(TreatmentContract, LoadsOverTheDefaults)
{
    for (const auto& [record, expected] :
        { std::pair<TextView, TextView> { replies::Contract, L"0 02/01/2026 OAK,KIT J 15" },
            { L"45^^^MENTAL HEALTH|M^01/05/2026@08:30|x^OAK,KIT|15\r\n", L"1 01/05/2026 OAK,KIT 15" },
            { L"45^^01/05/2026|81^PAIN|P^^OAK,KIT|15\r\n", L"0 01/05/2026 OAK,KIT 15" }, // the visit's date
            { L"45^^^X|x^02/30/2026^\r\n", L"-1 03/15/2026  " }, // a bad date leaves today, no provider clears the user
            { L"45^^^PAIN|P^02/01/2026^A|1\r\n45^^^MENTAL HEALTH|M^02/02/2026^B|2", L"1 02/02/2026 B 2" },
            { L"-1^Gone.", L"-1 03/15/2026 SORREL,ADA 71" } }) {
        frmTxc own(shared);
        own.m_sIEN = L"45";
        reply(L"MEVVTXC GET", record);
        open(own);
        own.load(); // shown again: the defaults are set once
        EXPECT_EQ(own.caption(), L"Update Treatment Contract");
        EXPECT_EQ(shown(own), expected);
    }
}

TEST_F(TreatmentContract, DatesOfTheLastYearOnly)
{
    open();
    for (const TextView date : { L"03/15/2026", L"T-364", L"N" }) {
        enterDate(form.datInit, date);
        EXPECT_TRUE(host.boxes().empty()) << narrow(date);
    }
    // The limit is a year back by day, not by the time of day.
    for (const TextView date : { L"T-365", L"T+1", L"soon" }) {
        enterDate(form.datInit, date);
        EXPECT_EQ(form.datInit.value(), L"03/15/2026") << narrow(date);
        form.datInit.clear();
    }
    EXPECT_BOXES(L"box [Invalid Date] Treatment date cannot be older than a year.",
        L"box [Invalid Date] The date cannot be in the future.", L"box [Invalid Date] The date format is not valid.");
    EXPECT_EQ(host.desktop.styles, (std::vector { 16, 16, 16 }));
}

TEST_F(TreatmentContract, ProviderComesFirstAndAnEmptyDateIsFilled)
{
    open();
    typeInto(form.txtPrv, L"");
    form.moveFocus(form.datInit);
    typeInto(form.txtPrv, L"NOBODY"); // no match: the box below reports it
    form.datInit.clear();
    form.press(form.cmdAdd);
    EXPECT_BOXES(L"box [Provider Missing] You must select the provider.");
    EXPECT_EQ(form.activeControl(), &form.txtPrv);
    EXPECT_TRUE(form.datInit.isEmpty());
    form.moveFocus(form.datInit);
    typeInto(form.txtPrv, L"OAK");
    reply(L"MEVUTL DICLKUP", L"15^^OAKHURST,KATHERINE J\r\n");
    form.press(form.cmdAdd); // leaves the field first: a single match is accepted
    EXPECT_EQ(form.txtPrv.text() + L"|" + form.txtPrv.tag(), L"OAKHURST,KATHERINE J|15");
    EXPECT_EQ(host.boxes().back().substr(0, 18), L"box [Type Missing]");
    EXPECT_EQ(form.datInit.value(), L"03/15/2026 09:30");
    EXPECT_EQ(form.datInit.note(), L"The date was empty: the present date and time were entered.");
    EXPECT_FALSE(form.opt[0].fault().empty()); // until any type is chosen
    form.opt[1].click();
    EXPECT_EQ(form.opt[0].fault(), L"");
}

TEST_F(TreatmentContract, TypedOverProviderKeepsTheNumber)
{
    form.m_sVisit = L"81";
    form.m_sIEN = L"45";
    reply(L"MEVVTXC GET", L"45^^^PAIN|P^02/01/2026^OAK,KIT|15\r\n");
    open();
    typeInto(form.txtPrv, L"ELM");
    EXPECT_EQ(form.defaultButton(), &form.cmdPrv);
    form.press(form.cmdAdd); // the user sees the restored name before it is saved
    EXPECT_EQ(host.calls().size(), 1u);
    EXPECT_EQ(form.txtPrv.text(), L"OAK,KIT");
    EXPECT_FALSE(form.txtPrv.note().empty());
    form.press(form.cmdAdd);
    EXPECT_EQ(host.calls().back(), L"call MEVVTXC SET(45^81^P^02/01/2026^15)");
}

}
