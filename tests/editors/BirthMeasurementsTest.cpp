#include "editors/frmPediatric.h"
#include "tests/support/FormFixture.h"

namespace health::test {
namespace {

class BirthMeasurements : public FormFixture<frmPediatric> {
protected:
    void load(TextView option, TextView reply)
    {
        host.session->reply(L"MEVUTL GETPARM", option);
        host.session->reply(L"MEVBMSR GET", reply);
        open();
    }
};

TEST_F(BirthMeasurements, LoadsTheUnitThatTheUserLikes)
{
    for (const auto& [option, weight, unit, parameter] :
        { std::tuple<TextView, TextView, TextView, TextView> { L"", L"7 2", L"(lbs oz)", L"0" },
            { L"1", L"3.23K", L"(kg)", L"1" }, { L"2", L"3232G", L"(grams)", L"2" },
            { L"5", L"7 2", L"(lbs oz)", L"0" }, { L"", L"", L"(lbs oz)", L"" } }) {
        host.session->values.clear();
        host.transcript.clear();
        host.session->reply(L"MEVUTL GETPARM", option);
        host.session->reply(L"MEVBMSR GET", weight.empty() ? L"^3^^^^^^^^2^6M^2W^5M^HARTLEY,ROSE|1" : replies::Birth);
        frmPediatric own(shared);
        own.open();
        own.Form_Activate();
        EXPECT_EQ(own.txt[0].text(), weight);
        EXPECT_EQ(own.lblWt.caption(), unit);
        EXPECT_EQ(own.txtPat.tag(), L"1");
        own.press(own.cmdAdd);
        Transcript calls { L"call MEVUTL GETPARM(RepHist-PedWtOpt)", L"call MEVBMSR GET(12)",
            L"call MEVBMSR SET(12^" + Text(weight) + L"^2^6M^2W^5M^1)" };
        if (!weight.empty()) // without one the unit is not remembered
            calls.push_back(L"call MEVUTL SETPARM(RepHist-PedWtOpt^" + Text(parameter) + L")");
        EXPECT_EQ(host.calls(), calls);
    }
}

TEST_F(BirthMeasurements, Weights)
{
    load(L"", L"");
    for (const TextView weight :
        { L"7 2", L"7-2", L"3.2K", L"3.2k", L"3200G", L"2 0", L"24 16", L"1.5 0", L"7  2", L"9.99K", L"908g" })
        EXPECT_TRUE(accepts(form.txt[0], weight)) << narrow(weight);
    EXPECT_TRUE(host.boxes().empty());
    for (const TextView weight :
        { L"1 5", L"25 0", L"7 17", L"0.907K", L"10K", L"907G", L"10000G", L"K", L"x 2", L"7 x", L"7 -1", L" " })
        EXPECT_FALSE(accepts(form.txt[0], weight)) << narrow(weight);
    EXPECT_EQ(host.boxes().front(), L"box [Invalid Entry] Invalid birth weight, please see example on form.");
}

TEST_F(BirthMeasurements, UnitFollowsTheKeys)
{
    load(L"", L"");
    typeInto(form.txt[0], L"3.2K");
    EXPECT_EQ(form.lblWt.caption(), L"(kg)");
    form.txt[0].edit(L"");
    EXPECT_TRUE(accepts(form.txt[0], L"3.2")); // taken as kilograms
    form.press(form.cmdAdd);
    EXPECT_EQ(host.calls()[2], L"call MEVBMSR SET(12^3.2K^^^^^)");
    EXPECT_EQ(host.calls()[3], L"call MEVUTL SETPARM(RepHist-PedWtOpt^1)");
    const std::pair<TextView, TextView> keys[] = { { L"g", L"(grams)" }, { L" ", L"(lbs-oz)" }, { L"k", L"(kg)" },
        { L"M", L"(kg)" }, { L"m", L"(lbs-oz)" } };
    for (const auto& [key, unit] : keys) {
        form.txt[3].pressKey(key[0]);
        EXPECT_EQ(form.lblWt.caption(), unit) << narrow(key);
    }
}

TEST_F(BirthMeasurements, UnderKilogramsAHyphenIsNotPoundsAndOunces)
{
    load(L"1", L"");
    EXPECT_FALSE(accepts(form.txt[0], L"7-2"));
    EXPECT_TRUE(accepts(form.txt[0], L"7 2")); // the blank has changed the unit
}

TEST_F(BirthMeasurements, OrdersAndAges)
{
    load(L"", L"");
    for (const TextView order : { L"1", L"24", L"0.5" })
        EXPECT_TRUE(accepts(form.txt[1], order)) << narrow(order);
    for (const TextView order : { L"0", L"25", L"x" })
        EXPECT_FALSE(accepts(form.txt[1], order)) << narrow(order);
    EXPECT_EQ(host.boxes().back(), L"box [Invalid Entry] Invalid birth order - answer must be between 1 and 25.");
    for (const TextView age : { L"6M", L"2w", L"10D", L"1.5Y", L"998D" })
        EXPECT_TRUE(accepts(form.txt[2], age)) << narrow(age);
    for (const TextView age : { L"M", L"0M", L"999D", L"6", L"6 X" })
        EXPECT_FALSE(accepts(form.txt[4], age)) << narrow(age);
    EXPECT_EQ(
        host.boxes().back(), L"box [Invalid Entry] Invalid feeding choice entry, please see explanation on form.");
}

TEST_F(BirthMeasurements, LoadedValuesAreNotJudged)
{
    load(L"", L"40^2^^^^^^^^99^x^^^");
    for (TextBox& box : form.txt)
        EXPECT_TRUE(form.moveFocus(box));
    form.press(form.cmdAdd);
    EXPECT_EQ(host.lines({ L"call MEVBMSR SET" }), Transcript { L"call MEVBMSR SET(12^40 2^99^X^^^)" });
    EXPECT_FALSE(accepts(form.txt[0], L"40 3")); // edited ones are
}

TEST_F(BirthMeasurements, MotherIsLookedUpOnLeaving)
{
    load(L"", L"");
    host.session->reply(L"MEVUTL DICLKUP", L"44^SMITH,ANNA^SMITH,ANNA^F\r\n");
    typeInto(form.txtPat, L"smith");
    EXPECT_EQ(form.defaultButton(), &form.cmdPat);
    form.moveFocus(form.txt[0]);
    EXPECT_EQ(host.calls().back(), L"list MEVUTL DICLKUP(2^SMITH^^^250^^^^.01;.02;.03;.09)");
    EXPECT_EQ(form.txtPat.text(), L"SMITH,ANNA");
    EXPECT_EQ(form.txtPat.tag(), L"44");
    EXPECT_EQ(form.defaultButton(), &form.cmdAdd);

    // Typed over, a name comes back with its number; emptied, it loses it.
    host.transcript.clear();
    typeInto(form.txtPat, L"other");
    form.moveFocus(form.txt[0]);
    EXPECT_TRUE(host.calls().empty());
    EXPECT_EQ(form.txtPat.text() + form.txtPat.tag(), L"SMITH,ANNA44");
    EXPECT_EQ(form.txtPat.note(),
        L"The name has not changed. To choose another, press \"...\" after typing it, or clear this one first.");
    form.moveFocus(form.txtPat);
    EXPECT_TRUE(form.txtPat.isAllSelected());
    form.txtPat.edit(L"");
    EXPECT_EQ(form.txtPat.note(), L"");
    form.moveFocus(form.txt[0]);
    EXPECT_EQ(form.txtPat.tag(), L"");
}

TEST_F(BirthMeasurements, LookupIsNotStartedTwiceNorTowardsCancel)
{
    load(L"", L"-1^Locked.^^^^^^^^2");
    EXPECT_EQ(form.txt[1].text(), L"");
    typeInto(form.txtPat, L"zz");
    form.press(form.cmdPat); // shows the empty dialog, which is closed
    EXPECT_EQ(form.txtPat.text(), L"zz"); // cancelling changes nothing
    form.moveFocus(form.txt[0]);
    EXPECT_EQ(form.txtPat.text(), L""); // nobody was found
    EXPECT_EQ(host.lines({ L"show" }).size(), 1u);
    typeInto(form.txtPat, L"zz");
    form.moveFocus(form.txt[0]); // the same name is searched again
    EXPECT_EQ(host.lines({ L"show" }).size(), 2u);
    typeInto(form.txtPat, L"zz");
    form.press(form.cmdCancel);
    EXPECT_EQ(host.lines({ L"show" }).size(), 2u);
    EXPECT_FALSE(form.isOpen());
}

TEST_F(BirthMeasurements, RefusedSaves)
{
    load(L"", replies::Birth);
    host.session->reply(L"MEVBMSR SET", L"-1^No.");
    form.press(form.cmdAdd);
    EXPECT_TRUE(form.isOpen());
    EXPECT_EQ(host.calls().back(), L"call MEVBMSR SET(12^7 2^2^6M^2W^5M^1)"); // no parameter after it
    host.session->reply(L"MEVBMSR SET", L"1");
    host.session->reply(L"MEVUTL SETPARM", L"-1^No parameter.");
    form.press(form.cmdAdd);
    EXPECT_EQ(host.boxes().back(), L"box [Setting Parameter RepHist-PedWtOpt] No parameter.");
    EXPECT_FALSE(form.isOpen());
}

}
}
