#include "platform/Form.h"
#include "platform/controls/CheckBox.h"
#include "platform/controls/CheckList.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/mevContainer.h"
#include "platform/controls/mevZvDate.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health::test {

// Two fields, the first with a lookup, and the usual buttons; logs what happens.
struct TwoFields : Form {
    TwoFields()
        : Form(L"TwoFields")
    {
        setCancelButton(cancel);
        setLookupButton(first, lookup);
        const auto logFocus = [this](Control& control, const std::string& name) {
            control.GotFocus = [this, name] { log += name + "+ "; };
            control.LostFocus = [this, name] { log += name + "- "; };
        };
        logFocus(first, "first");
        logFocus(second, "second");
        logFocus(ok, "ok");
        first.Validate = [this](bool& keep) {
            log += "validate ";
            keep = refuse;
        };
        date.setRequireTime(true);
        date.setClock([] { return momentOf(2026, 3, 15, 9, 30); });
        date.EntryRefused = [this] { log += "refused "; };
        ok.Click = [this] { log += "OK "; };
        lookup.Click = [this] { log += "lookup "; };
        cancel.Click = [this] { close(); };
        open();
    }

    std::string takeLog() { return std::exchange(log, {}); }

    TextBox first, second;
    mevZvDate date;
    Button lookup, ok, cancel;
    std::string log;
    bool refuse = false;
};

TEST(Form, FieldIsLeftBeforeTheButtonIsPressed)
{
    TwoFields form;
    form.moveFocus(form.first);
    form.press(form.ok);
    EXPECT_EQ(form.takeLog(), "first+ validate first- ok+ OK ");
    form.moveFocus(form.first);
    form.refuse = true;
    EXPECT_FALSE(form.moveFocus(form.second));
    form.press(form.ok); // by Enter or Alt+O, which do not move the focus
    EXPECT_EQ(form.activeControl(), &form.first);
    EXPECT_EQ(form.takeLog(), "ok- first+ validate validate ");
    form.press(form.cancel); // Cancel always closes
    EXPECT_FALSE(form.isOpen());
    form.refuse = false;
    form.press(form.ok); // the second half of a double click
    EXPECT_EQ(form.takeLog(), "first- ");
}

TEST(Form, FocusIsNotSetToUnusableControls)
{
    TwoFields form;
    form.second.setEnabled(false);
    form.setFocus(form.second);
    form.ok.setEnabled(false);
    form.press(form.ok);
    EXPECT_EQ(form.activeControl(), nullptr);
}

TEST(Form, LookupButtonBelongsToItsField)
{
    TwoFields form;
    form.moveFocus(form.first);
    form.press(form.lookup);
    EXPECT_EQ(form.takeLog(), "first+ lookup "); // the field keeps the focus, so it is not searched twice
    form.moveFocus(form.second);
    EXPECT_EQ(form.takeLog(), "validate first- second+ ");
    form.moveFocus(form.first);
    form.moveFocus(form.lookup); // by Tab: leaves the field as usual
    EXPECT_EQ(form.takeLog(), "second- first+ validate first- ");
}

TEST(Form, FieldLeftForCancelIsValidatedWhenTheFocusMovesOn)
{
    TwoFields form;
    form.refuse = true;
    form.moveFocus(form.first);
    EXPECT_TRUE(form.moveFocus(form.cancel));
    EXPECT_FALSE(form.moveFocus(form.second));
    EXPECT_EQ(form.activeControl(), &form.first);
    EXPECT_EQ(form.takeLog(), "first+ first- validate ");
    form.first.setEnabled(false); // disabled: the user could not correct it
    EXPECT_TRUE(form.moveFocus(form.second));
}

TEST(Form, RefusedDateStopsAPressButNotTheFocus)
{
    TwoFields form;
    form.moveFocus(form.date);
    form.date.type(L"3/1/2026"); // without its time
    form.press(form.ok);
    EXPECT_EQ(form.activeControl(), &form.date);
    EXPECT_EQ(form.takeLog(), "refused ");
    form.date.type(L"T");
    EXPECT_TRUE(form.moveFocus(form.second));
    EXPECT_EQ(form.takeLog(), "refused second+ ");
}

TEST(Form, FrontEndIsNotified)
{
    struct FrontEnd : FormObserver {
        std::string log;
        void captionChanged(Form& form) override { log += narrow(form.caption()) + ' '; }
        void focusMoved(Form&) override { log += "moved "; }
        void focusSettled(Form&) override { log += "settled "; }
        void defaultChanged(Form&) override { log += "default "; }
        void textsChanged(Form&) override { log += "texts "; }
        void closed(Form&) override { log += "closed "; }
    } frontEnd;
    TwoFields form;
    form.setObserver(&frontEnd);
    form.first.LostFocus = [&] { form.setFocus(form.ok); }; // moves the focus on
    form.setCaption(L"Two");
    form.moveFocus(form.first);
    form.moveFocus(form.second);
    form.setDefaultButton(&form.ok);
    form.close();
    form.close();
    EXPECT_EQ(frontEnd.log, "Two moved settled moved moved settled default closed ");
}

TEST(Container, PassesItsStateOnButNotThroughAnotherFrame)
{
    mevContainer outer;
    mevContainer inner;
    TextBox box;
    Label label;
    CheckBox check;
    outer.hold({ &check, &inner });
    inner.hold({ &box, &label });
    inner.setEnabled(false);
    label.setForeColour(2);
    outer.setEnabled(false);
    outer.setEnabled(true);
    EXPECT_TRUE(check.canBeUsed());
    EXPECT_FALSE(box.isEnabled());
    inner.setEnabled(true);
    EXPECT_TRUE(box.canBeUsed());
    EXPECT_EQ(label.foreColour(), 2u); // a colour set by the program is kept, grey is reset
    label.setForeColour(GreyText);
    inner.setEnabled(true);
    EXPECT_EQ(label.foreColour(), DefaultColour);
    outer.setEnabled(false);
    EXPECT_TRUE(inner.isEnabled());
    box.edit(L"x");
    EXPECT_EQ(box.text(), L"");
    check.click();
    EXPECT_FALSE(check.isChecked());
}

TEST(DateControl, ShortForms)
{
    const Moment now = momentOf(2026, 3, 31, 14, 5, 40);
    for (const auto& [typed, shown] :
        { std::pair<TextView, TextView> { L"T", L"03/31/2026" }, { L"t-3", L"03/28/2026" }, { L"T+1W", L"04/07/2026" },
            { L"T-1M", L"02/28/2026" }, { L"T+1Y", L"03/31/2027" }, { L"TODAY", L"03/31/2026" },
            { L"T@0830", L"T@0830" }, { L"T@08:30", L"03/31/2026 08:30" }, { L"N", L"03/31/2026 14:05" },
            { L"NOW", L"03/31/2026 14:05" }, { L"N-1D", L"03/30/2026 14:05" }, { L"010206", L"01/02/2006" },
            { L"01022006", L"01/02/2006" }, { L"1/2/2006", L"01/02/2006" },
            { L"JAN 2,2006@14:30", L"01/02/2006 14:30" }, { L"NOV 2, 2006", L"11/02/2006" },
            { L"T+7973Y", L"03/31/9999" }, { L"T+7974Y", L"T+7974Y" }, { L"N+9999Y", L"N+9999Y" },
            { L"T-9999Y", L"T-9999Y" }, { L"T@0:00:05", L"03/31/2026" }, { L"1/2/2006 7:08:59", L"01/02/2006 07:08" },
            { L"T+", L"T+" }, { L"T-3X", L"T-3X" }, { L"TT", L"TT" }, { L"133206", L"133206" }, { L" soon ", L"soon" },
            { L"N 14:30", L"N 14:30" }, { L"N@14:30", L"N@14:30" }, { L"T+10000", L"T+10000" },
            { L"+2W", L"04/14/2026" }, { L"-3", L"03/28/2026" }, { L"+10 8:30", L"04/10/2026 08:30" }, { L"+", L"+" },
            { L"tuesday", L"03/31/2026" }, { L"Wed", L"03/25/2026" }, { L"thu@14:30", L"03/26/2026 14:30" },
            { L"MAR 3, 2026", L"03/03/2026" }, { L"MON 3, 2026", L"MON 3, 2026" }, { L"SATU", L"SATU" },
            { L"THU+1", L"THU+1" }, { L"yesterday", L"03/30/2026" }, { L"Tomorrow", L"04/01/2026" },
            { L"02/30/2026", L"02/30/2026" }, { L"13/1/2026", L"13/1/2026" }, { L"abc", L"abc" } }) {
        mevZvDate date;
        date.enter(typed, now);
        EXPECT_EQ(date.value(), shown) << narrow(typed);
    }
}

TEST(DateControl, TypedTextBecomesTheValueWhenTheFieldIsLeft)
{
    mevZvDate date;
    date.setClock([] { return momentOf(2026, 3, 31); });
    EXPECT_TRUE(date.settle()); // nothing was typed
    date.setNote(L"note");
    date.type(L"t");
    EXPECT_EQ(date.shown() + L"/" + date.value() + L"/" + date.note(), L"t//");
    EXPECT_TRUE(date.wasTouched() && date.settle());
    EXPECT_EQ(date.value(), L"03/31/2026");
    date.entered();
    EXPECT_FALSE(date.wasTouched());
    date.enter(L"T", Moment());
    EXPECT_TRUE(date.wasTouched());
    std::string log;
    date.NewDateEntered = [&] { log += "entered "; };
    date.EntryRefused = [&] { log += "refused "; };
    date.type(L"half a da");
    date.setValue(L"01/02/2006"); // replaces what is being typed
    EXPECT_EQ(date.shown(), L"01/02/2006");
    EXPECT_TRUE(date.enter(L"01/02/2006", Moment()) && date.enter(L"", Moment()));
    EXPECT_EQ(log, "");
    EXPECT_TRUE(date.enter(L"1/3/2006", Moment()));
    date.setRequireTime(true);
    EXPECT_TRUE(date.enter(L"1/3/2006", Moment())); // unchanged
    EXPECT_FALSE(date.enter(L"1/4/2006", Moment()));
    EXPECT_EQ(log, "entered refused ");
}

}
