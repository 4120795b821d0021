// What the forms say about a date while it is typed is what happens when the field is left.
#include "tests/support/Editors.h"
#include "tests/support/FormFixture.h"
#include "text/DateWords.h"

namespace health::test {

constexpr TextView Texts[] = { L"", L" ", L"T", L"t-1", L"T+1", L"T+270", L"T+271", L"-3", L"+2W", L"+10", L"T-364",
    L"T-365", L"T-365 23:00", L"T-365 9:31", L"N", L"N-365", L"N+1", L"now", L"fri", L"Sunday", L"mon 14:30",
    L"MAR 3, 2026", L"SAT 3, 2026", L"yesterday", L"tomorrow", L"02/30/2026", L"13/1/2026", L"abc", L"1/", L"03152",
    L"031526", L"1/1/1799", L"12/31/2699", L"1/1/2700", L"T@0:00", L"T 23:59", L"03/15/2026", L"03/14/2026 22:45",
    L"FEB 3", L"1/1/2020" };

// Types a text, reads the explanation and leaves the field for Cancel's neighbour.
template<typename Editor>
class DateExplanation : public FormFixture<Editor> {
protected:
    void compare(mevZvDate& date, Control& next, TextView before)
    {
        date.setClock([this] { return this->host.desktop.today; });
        for (const TextView text : Texts) {
            date.setValue(before);
            this->form.moveFocus(date);
            date.type(text);
            const Explanation said = this->form.explain(date);
            this->host.transcript.clear();
            this->form.moveFocus(next);
            checkLeft(date, said, narrow(before) + " -> " + narrow(text));
        }
    }

    void checkLeft(const mevZvDate& date, const Explanation& said, const std::string& where)
    {
        const Transcript boxes = this->host.boxes();
        EXPECT_EQ(!boxes.empty(), said.tone == Tone::Error || said.tone == Tone::Caution)
            << where << narrow(said.beside);
        EXPECT_EQ(boxes.empty(), date.fault().empty()) << where;
        if (said.tone == Tone::Error && !date.requiresTime()) {
            EXPECT_TRUE(!boxes.empty() && boxes[0].ends_with(said.beside)) << where << ": " << narrow(said.beside);
        }
        if (boxes.empty() && said.beside.find(L'\u00B7') != Text::npos) {
            const auto timePart = hasTime(*date.moment()) || date.requiresTime() ? TimePart::With : TimePart::Without;
            EXPECT_EQ(said.beside, dateWords(*date.moment(), this->host.desktop.today, timePart)) << where;
        }
    }
};

using ReproductiveDates = DateExplanation<frmRepHist>;
TEST_F(ReproductiveDates, AgreeWithLeaving)
{
    reply(L"MEVREP GET", replies::Reproductive);
    open();
    form.chkPregnant.setChecked(true);
    form.fraPregnant.setEnabled(true);
    for (mevZvDate* const date : { &form.datLMP, &form.datFP, &form.datDelivery }) {
        for (const TextView before : { L"", L"03/15/2026", L"01/01/2020" })
            compare(*date, form.txNumRH[0], before);
    }
    EXPECT_EQ(form.explain(form.datLMP).below, L"allowed: up to today");
    EXPECT_EQ(form.explain(form.datDelivery).below, L"allowed: today to 12/10/2026");
    enterDate(form.datDelivery, L"T+271");
    EXPECT_EQ(form.datDelivery.fault(),
        L"Date cannot be more than 9 months in the future. The date is now 270 days from today.");
}

using ContractDates = DateExplanation<frmTxc>;
TEST_F(ContractDates, AgreeWithLeaving)
{
    open();
    for (const TextView before : { L"03/15/2026", L"01/02/2020", L"no date" })
        compare(form.datInit, form.opt[0], before);
    EXPECT_EQ(form.explain(form.datInit).below, L"allowed: 03/16/2025 to today");
    form.datInit.setValue(L"no date");
    EXPECT_EQ(form.explain(form.datInit).tone, Tone::Caution); // as it was loaded
    enterDate(form.datInit, L"soon");
    EXPECT_EQ(form.datInit.fault(), L"The date format is not valid. Today's date was entered instead.");
    EXPECT_EQ(form.datInit.value(), L"03/15/2026");
    host.desktop.today = momentOf(2026, 3, 15); // at midnight the day a year ago is accepted
    EXPECT_EQ(form.explain(form.datInit).below, L"allowed: 03/15/2025 to today");
}

using RefusalDates = DateExplanation<frmRefusal>;
TEST_F(RefusalDates, AgreeWithLeaving)
{
    open();
    for (const TextView before : { L"03/15/2026", L"09/22/2025" })
        compare(form.datRefused, form.lstRefusals, before);
    form.datRefused.type(L"");
    EXPECT_EQ(form.explain(form.datRefused).beside, L"Today's date will be entered.");
}

using RegistryDates = DateExplanation<frmAsthmaReg>;
TEST_F(RegistryDates, AgreeWithLeaving)
{
    open();
    compare(form.dat[1], form.txtComments, L"");
    EXPECT_EQ(form.explain(form.dat[1]).below, L"");
    EXPECT_EQ(form.dat[1].allowed(host.desktop.today).first, momentOf(1800, 1, 1));
    EXPECT_EQ(form.dat[1].allowed(host.desktop.today).last, momentOf(2699, 12, 31));
}

using DepartureDates = DateExplanation<frmER>;
TEST_F(DepartureDates, AgreeWithLeaving)
{
    open();
    for (const TextView before : { L"", L"03/14/2026 22:45", L"03/14/2026" })
        compare(form.datDepart, form.txtCond, before);
    form.moveFocus(form.datDepart);
    form.datDepart.type(L"3/1");
    EXPECT_EQ(form.explain(form.datDepart).beside, L"Not yet a date");
    form.datDepart.type(L"3/15/2026");
    EXPECT_EQ(form.explain(form.datDepart).beside, L"Enter the time too");
}

TEST_F(ReproductiveDates, DeliveryIsDerivedFromTheLastPeriod)
{
    reply(L"MEVREP GET", replies::Reproductive);
    open();
    form.datLMP.setValue(L"06/08/2025"); // due today
    EXPECT_EQ(form.explain(form.datDelivery).suggestion,
        L"From LMP: 03/15/2026 (280 days); today 40 weeks; 211 days earlier than entered");
    form.datLMP.setValue(L"11/14/2025"); // 17 weeks 2 days before 03/15/2026
    form.chkPregnant.setChecked(true);
    form.fraPregnant.setEnabled(true);
    form.datDelivery.clear();
    const auto said = [&] { return form.explain(form.datDelivery); };
    EXPECT_EQ(said().suggestion, L"From LMP: 08/21/2026 (280 days); today 17 weeks 2 days");
    form.datDelivery.setValue(L"08/18/2026");
    EXPECT_EQ(said().suggestion, L"From LMP: 08/21/2026 (280 days); today 17 weeks 2 days; 3 days later than entered");
    form.datDelivery.setValue(L"08/22/2026");
    EXPECT_TRUE(said().suggestion.ends_with(L"; 1 day earlier than entered"));
    form.datDelivery.setFault(L"fault");
    said().use();
    EXPECT_EQ(form.datDelivery.value() + form.datDelivery.fault(), L"08/21/2026");
    EXPECT_TRUE(said().suggestion.ends_with(L"; as entered"));
    EXPECT_FALSE(said().use);
    for (const TextView period : { L"03/10/2026", L"01/01/2025" }) { // due in more than 270 days, or in the past
        form.datLMP.setValue(period);
        EXPECT_FALSE(said().use) << narrow(period);
        EXPECT_FALSE(said().suggestion.empty());
    }
    form.datLMP.setValue(L"11/14/2025");
    form.datDelivery.setValue(L"08/22/2026");
    EXPECT_TRUE(said().use);
    form.fraPregnant.setEnabled(false);
    EXPECT_FALSE(said().use);
    form.datLMP.clear();
    EXPECT_EQ(said().suggestion, L"");
}

}
