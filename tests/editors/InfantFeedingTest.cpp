#include "editors/frmInf.h"
#include "tests/support/FormFixture.h"

namespace health::test {

class InfantFeeding : public FormFixture<frmInf> {
protected:
    // The codes of the checked rows.
    Text checked()
    {
        Text codes;
        for (int i = 0; i < form.lstINF.count(); ++i)
            codes += form.lstINF.isChecked(i) ? std::to_wstring(form.lstINF.itemData(i)) : L"";
        return codes;
    }
};

TEST_F(InfantFeeding, AddingCallsNoServerAndSavesTheCode)
{
    form.m_sVisit = L"812";
    open();
    EXPECT_EQ(form.caption(), L"Add Infant Feeding Record");
    EXPECT_TRUE(host.calls().empty());
    form.lstINF.click(2);
    form.press(form.cmdAdd);
    EXPECT_CALLS(L"call MEVVIF SET(^812^3)");
    EXPECT_FALSE(form.isOpen());
}

TEST_F(InfantFeeding, EditingLoadsTheRecordOnce)
{
    form.m_sIEN = L"45";
    form.m_sVisit = L"812";
    host.session->reply(
        L"MEVVIF GET", L"45^^3260310|812^MOSTLY FORMULA|4\r\n45^^^FORMULA ONLY|9\r\n45^^^X\r\n45^^^FORMULA|5");
    open();
    EXPECT_EQ(form.caption(), L"Infant Feeding Choice");
    EXPECT_EQ(checked(), L"4"); // unknown codes and unterminated lines check nothing
    EXPECT_EQ(form.lstINF.listIndex(), 3);
    form.Form_Activate(); // activated again by a box
    EXPECT_CALLS(L"list MEVVIF GET(^45)");
    form.lstINF.click(0);
    form.press(form.cmdAdd);
    EXPECT_EQ(host.calls().back(), L"call MEVVIF SET(45^812^1)");
}

TEST_F(InfantFeeding, AtMostOneChoice)
{
    open();
    form.lstINF.click(0);
    form.lstINF.click(4);
    EXPECT_EQ(checked(), L"5");
    form.lstINF.click(4);
    EXPECT_EQ(checked(), L"");
    form.press(form.cmdAdd);
    EXPECT_BOXES(L"box [Type Missing] You must select the infant feeding option, before the record can be saved.");
    EXPECT_EQ(host.desktop.styles, std::vector { 48 });
    EXPECT_EQ(form.activeControl(), &form.lstINF);
    EXPECT_TRUE(host.calls().empty());
    EXPECT_TRUE(form.isOpen());
}

}
