#include "platform/controls/Button.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Grid.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace health {

struct Observed : ControlObserver {
    std::vector<Change> changes;
    void controlChanged(Control&, Change change) override { changes.push_back(change); }
};

TEST(ComboBox, SortedListKeepsTheSelectedEntrySelected)
{
    ComboBox list(ComboBox::Order::Sorted);
    int clicks = 0;
    list.Click = [&] { ++clicks; };
    list.addItem(L"refusal", 7);
    list.addItem(L"Asthma", 5);
    ASSERT_TRUE(list.selectItemData(7));
    EXPECT_EQ(list.addItem(L" first", 0), 0);
    EXPECT_EQ(list.text(), L"refusal");
    EXPECT_EQ(list.listIndex(), 2);
    EXPECT_FALSE(list.selectItemData(99));
    for (const int refused : { -1, 3 })
        list.choose(refused); // there is always a choice
    list.setEnabled(false);
    list.choose(0);
    EXPECT_EQ(list.text(), L"refusal");
    EXPECT_EQ(clicks, 1);
    EXPECT_THROW(list.setListIndex(3), std::out_of_range);
    list.addItem(L"ASTHMA", 6);
    EXPECT_EQ(SelectComboItem(list, L"asthma"), 1); // the first of two
    EXPECT_EQ(SelectComboItem(list, L"none of these"), -1);
    EXPECT_EQ(list.listIndex(), -1);
    list.clear();
    EXPECT_EQ(list.itemData(list.listIndex()), 0);
    EXPECT_EQ(list.text(), L"");
}

TEST(Button, IgnoresClicksWhileUnusableAndNotifiesRealChangesOnly)
{
    Button button;
    Observed observed;
    button.setObserver(&observed);
    int clicks = 0;
    button.Click = [&] { ++clicks; };
    button.setEnabled(true);
    button.click();
    button.setEnabled(false);
    button.click();
    button.setEnabled(true);
    button.setVisible(false);
    button.click();
    EXPECT_EQ(clicks, 1);
    button.setCaption(L"&OK");
    button.setCaption(L"&OK");
    EXPECT_EQ(observed.changes, (std::vector { Change::Enabled, Change::Enabled, Change::Visible, Change::Caption }));
}

TEST(Grid, RemovingTheSelectedRowClearsTheSelection)
{
    Grid grid;
    grid.setColumnCount(2);
    grid.setRowCount(3);
    int changes = 0;
    grid.SelectionChange = [&] { ++changes; };
    grid.select(2, 1);
    grid.select(2);
    EXPECT_EQ(changes, 1);
    grid.setRowCount(2);
    EXPECT_EQ(grid.row(), -1);
    EXPECT_EQ(changes, 2);
    EXPECT_THROW(grid.select(2), std::out_of_range);
    for (const auto& [row, column] : { std::pair { 2, 0 }, { 0, 2 } })
        EXPECT_THROW(grid.text(row, column), std::out_of_range);
}

TEST(Grid, TextsSurviveGrowthAndReuseOfTheStorage)
{
    Grid grid;
    grid.setColumnCount(2);
    const Text longText(40000, L'x'); // longer than a storage block
    for (int round = 0; round < 2; ++round) {
        grid.clear();
        grid.setRowCount(0);
        for (int row = 0; row < 3000; ++row) {
            grid.setRowCount(row + 1);
            grid.setText(row, 0, row % 1000 == 0 ? longText : std::to_wstring(row));
            grid.setRowData(row, L"key" + std::to_wstring(row));
        }
        EXPECT_EQ(grid.text(1000, 0), longText);
        EXPECT_EQ(Text(grid.text(2999, 0)) + Text(grid.rowData(1)) + Text(grid.text(7, 1)), L"2999key1");
    }
}

TEST(Grid, NotifiesOnceAfterADrawingPause)
{
    Grid grid;
    grid.setColumnCount(1);
    Observed observed;
    grid.setObserver(&observed);
    grid.setDrawing(false);
    grid.setRowCount(2);
    grid.setText(0, 0, L"a");
    grid.setCellForeColour(0, 0, Blue);
    grid.setDrawing(true);
    EXPECT_EQ(observed.changes, (std::vector { Change::Contents, Change::Contents }));
    EXPECT_EQ(grid.cellForeColour(0, 0), Blue);
    grid.setRowData(0, L"AS^7");
    grid.clear();
    EXPECT_EQ(grid.cellForeColour(0, 0), DefaultColour);
    EXPECT_EQ(grid.rowData(0), L"");
}

}
