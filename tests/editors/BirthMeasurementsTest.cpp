#include "editors/frmPediatric.h"
#include "tests/support/FormFixture.h"

namespace health::test {

class BirthMeasurements : public FormFixture<frmPediatric> {
protected:
    void load(TextView option, TextView record)
    {
        reply(L"MEVUTL GETPARM", option);
        reply(L"MEVBMSR GET", record);
        open();
    }
};

TEST_F(BirthMeasurements, LoadsInTheUsersUnitAndSavesIt)
{
    for (const auto& [option, weight, unit, parameter] :
        { std::tuple<TextView, TextView, TextView, TextView> { L"", L"7 2", L"(lbs oz)", L"0" },
            { L"1", L"3.23K", L"(kg)", L"1" }, { L"2", L"3232G", L"(grams)", L"2" },
            { L"5", L"7 2", L"(lbs oz)", L"0" }, { L"", L"", L"(lbs oz)", L"" } }) {
        host.session->values.clear();
        host.transcript.clear();
        reply(L"MEVUTL GETPARM", option);
        reply(L"MEVBMSR GET", weight.empty() ? L"^3^^^^^^^^2^6M^2W^5M^HARTLEY,ROSE|1" : replies::Birth);
        frmPediatric own(shared);
        open(own);
        EXPECT_EQ(own.txt[0].text() + own.lblWt.caption(), Text(weight) + Text(unit));
        own.press(own.cmdAdd);
        Transcript calls { L"call MEVUTL GETPARM(RepHist-PedWtOpt)", L"call MEVBMSR GET(12)",
            L"call MEVBMSR SET(12^" + Text(weight) + L"^2^6M^2W^5M^1)" };
        if (!weight.empty()) // the unit is saved with a weight only
            calls.push_back(L"call MEVUTL SETPARM(RepHist-PedWtOpt^" + Text(parameter) + L")");
        EXPECT_EQ(host.calls(), calls);
    }
}

TEST_F(BirthMeasurements, EntriesAndTheirBounds)
{
    load(L"", L"");
    const auto check = [&](std::size_t box, std::initializer_list<TextView> good, std::initializer_list<TextView> bad,
                           const Text& message) {
        host.transcript.clear();
        for (const TextView text : good)
            EXPECT_TRUE(accepts(form.txt[box], text)) << narrow(text);
        EXPECT_TRUE(host.boxes().empty());
        for (const TextView text : bad)
            EXPECT_FALSE(accepts(form.txt[box], text)) << narrow(text);
        EXPECT_EQ(host.boxes(), Transcript(bad.size(), L"box [Invalid Entry] Invalid " + message));
    };
    check(0, { L"7 2", L"7-2", L"3.2K", L"3.2k", L"3200G", L"2 0", L"24 16", L"1.5 0", L"7  2", L"9.99K", L"908g" },
        { L"1 5", L"25 0", L"7 17", L"0.907K", L"10K", L"907G", L"10000G", L"K", L"x 2", L"7 x", L"7 -1", L" " },
        L"birth weight, please see example on form.");
    check(1, { L"1", L"24", L"0.5" }, { L"0", L"25", L"x" }, L"birth order - answer must be between 1 and 25.");
    for (const std::size_t age : { 2u, 3u, 4u })
        check(age, { L"6M", L"2w", L"10D", L"1.5Y", L"998D" }, { L"M", L"0M", L"999D", L"6", L"6 X" },
            L"feeding choice entry, please see explanation on form.");
}

TEST_F(BirthMeasurements, UnitFollowsTheKeys)
{
    load(L"1", L"");
    EXPECT_FALSE(accepts(form.txt[0], L"7-2")); // in kilograms not pounds and ounces
    EXPECT_TRUE(accepts(form.txt[0], L"7 2")); // the blank has changed the unit
    typeInto(form.txt[0], L"3.2K");
    EXPECT_EQ(form.lblWt.caption(), L"(kg)");
    form.txt[0].edit(L"");
    EXPECT_TRUE(accepts(form.txt[0], L"3.2"));
    form.press(form.cmdAdd);
    EXPECT_EQ(host.calls()[2], L"call MEVBMSR SET(12^3.2K^^^^^)");
    EXPECT_EQ(host.calls()[3], L"call MEVUTL SETPARM(RepHist-PedWtOpt^1)");
    for (const auto& [key, unit] : { std::pair<wchar_t, TextView> { L'g', L"(grams)" }, { L' ', L"(lbs-oz)" },
             { L'k', L"(kg)" }, { L'M', L"(kg)" }, { L'm', L"(lbs-oz)" } }) {
        form.txt[3].pressKey(key);
        EXPECT_EQ(form.lblWt.caption(), unit) << static_cast<int>(key);
    }
}

TEST_F(BirthMeasurements, LoadedValuesAreNotValidated)
{
    load(L"", L"40^2^^^^^^^^99^x^^^");
    for (TextBox& box : form.txt)
        EXPECT_TRUE(form.moveFocus(box));
    form.press(form.cmdAdd);
    EXPECT_LINES(L"call MEVBMSR SET", L"call MEVBMSR SET(12^40 2^99^X^^^)");
    EXPECT_FALSE(accepts(form.txt[0], L"40 3")); // edited values are
}

TEST_F(BirthMeasurements, MotherIsLookedUpOnLeaving)
{
    load(L"", L"");
    reply(L"MEVUTL DICLKUP", L"44^SMITH,ANNA^SMITH,ANNA^F\r\n");
    typeInto(form.txtPat, L"smith");
    EXPECT_EQ(form.defaultButton(), &form.cmdPat);
    form.moveFocus(form.txt[0]);
    EXPECT_EQ(host.calls().back(), L"list MEVUTL DICLKUP(2^SMITH^^^250^^^^.01;.02;.03;.09)");
    EXPECT_EQ(form.txtPat.text() + form.txtPat.tag(), L"SMITH,ANNA44");
    EXPECT_EQ(form.defaultButton(), &form.cmdAdd);

    // Typing over the name restores it; clearing the field clears its number.
    host.transcript.clear();
    typeInto(form.txtPat, L"other");
    form.moveFocus(form.txt[0]);
    EXPECT_TRUE(host.calls().empty());
    EXPECT_EQ(form.txtPat.text() + form.txtPat.tag(), L"SMITH,ANNA44");
    EXPECT_EQ(form.txtPat.note(),
        L"The name has not changed. To choose another, press \"...\" after typing it, or clear this one first.");
    form.moveFocus(form.txtPat);
    EXPECT_TRUE(form.txtPat.isAllSelected());
    form.press(form.cmdPat);
    EXPECT_EQ(form.txtPat.note(), L"");
    form.txtPat.edit(L"");
    form.moveFocus(form.txt[0]);
    EXPECT_EQ(form.txtPat.tag(), L"");
}

TEST_F(BirthMeasurements, LookupIsStartedOnceAndNotByCancel)
{
    load(L"", L"-1^Locked.^^^^^^^^2");
    EXPECT_EQ(form.txt[1].text(), L"");
    typeInto(form.txtPat, L"zz");
    form.press(form.cmdPat); // shows the empty dialog, which is closed
    EXPECT_EQ(form.txtPat.text(), L"zz");
    form.moveFocus(form.txt[0]);
    EXPECT_EQ(form.txtPat.text(), L""); // no match
    EXPECT_LINES(L"show", L"show frmLookup");
    typeInto(form.txtPat, L"zz");
    form.moveFocus(form.txt[0]); // the same name is searched again
    typeInto(form.txtPat, L"zz");
    form.press(form.cmdCancel);
    EXPECT_LINES(L"show", L"show frmLookup", L"show frmLookup");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(BirthMeasurements, RefusedSaveKeepsTheFormOpen)
{
    load(L"", replies::Birth);
    reply(L"MEVBMSR SET", L"-1^No.");
    form.press(form.cmdAdd);
    EXPECT_TRUE(form.isOpen());
    EXPECT_EQ(host.calls().back(), L"call MEVBMSR SET(12^7 2^2^6M^2W^5M^1)"); // without the parameter
    reply(L"MEVBMSR SET", L"1");
    reply(L"MEVUTL SETPARM", L"-1^No parameter.");
    form.press(form.cmdAdd);
    EXPECT_EQ(host.boxes().back(), L"box [Setting Parameter RepHist-PedWtOpt] No parameter.");
    EXPECT_FALSE(form.isOpen());
}

}
