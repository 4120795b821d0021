#include "qt/GridView.h"
#include "qt/GridModel.h"
#include "qt/QtDesktop.h"
#include "tests/support/ScriptedHost.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace health::test {
namespace {

class GridViewTest : public testing::Test {
protected:
    GridViewTest()
    {
        grid.setColumnCount(3);
        grid.setColumnWidth(0, 1600);
        grid.setColumnHidden(2, true);
        grid.setWordWrap(true);
    }

    void fill(int rows)
    {
        grid.setDrawing(false);
        grid.setRowCount(rows);
        for (int row = 0; row < rows; ++row) {
            grid.setText(row, 0, L"Functional Status");
            grid.setText(
                row, 1, row % 2 == 0 ? Text(400, L'w').replace(50, 1, L" ").replace(200, 1, L" ") : Text(L"short"));
            grid.setText(row, 2, std::to_wstring(row));
        }
        grid.setDrawing(true);
    }

    void open(int rows)
    {
        fill(rows);
        view.resize(500, 300);
        view.show();
        QTest::qWait(20);
    }

    QtDesktop desktop;
    Grid grid;
    GridView view { grid, desktop, { "Record", "Summary" }, nullptr };
};

TEST_F(GridViewTest, ModelHasTheShownColumnsOnly)
{
    const QAbstractItemModelTester tester(view.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    fill(3);
    EXPECT_EQ(view.model()->rowCount(), 3);
    EXPECT_EQ(view.model()->columnCount(), 2);
    EXPECT_EQ(view.model()->index(1, 1).data().toString(), "short");
    EXPECT_EQ(view.model()->headerData(1, Qt::Horizontal).toString(), "Summary");
    grid.setColumnHidden(0, true);
    EXPECT_EQ(view.model()->columnCount(), 1);
    EXPECT_EQ(view.model()->headerData(0, Qt::Horizontal).toString(), "Summary");
}

TEST_F(GridViewTest, ShowsNoRowsWhileTheGridDoesNotDraw)
{
    fill(3);
    grid.setDrawing(false);
    EXPECT_EQ(view.model()->rowCount(), 0);
    grid.setRowCount(0); // a paint event now must not ask for rows
    view.show();
    QTest::qWait(20);
    grid.setDrawing(true);
    EXPECT_EQ(view.model()->rowCount(), 0);
}

TEST_F(GridViewTest, MeasuresOnlyRowsThatCanBeSeen)
{
    open(10000);
    const int unmeasured = view.rowHeight(5000);
    EXPECT_GT(view.rowHeight(0), unmeasured); // wrapped
    EXPECT_EQ(view.rowHeight(5000), view.rowHeight(5001));
    view.verticalScrollBar()->setValue(5000);
    EXPECT_GT(view.rowHeight(5000), unmeasured);
    EXPECT_EQ(view.rowHeight(8000), unmeasured);
    view.scrollToBottom();
    const int bottom = view.rowViewportPosition(9999) + view.rowHeight(9999);
    EXPECT_LE(bottom, view.viewport()->height());
}

TEST_F(GridViewTest, AReloadDoesNotMoveTheList)
{
    open(1000);
    view.verticalScrollBar()->setValue(500);
    {
        const DrawingPause pause(grid);
        grid.setRowCount(0);
        QTest::qWait(1); // a message box of the reload paints the window
        grid.setRowCount(1000);
    }
    EXPECT_EQ(view.verticalScrollBar()->value(), 500);
}

TEST_F(GridViewTest, ContextMenuByMouseAndByKeys)
{
    open(4);
    grid.select(1);
    std::vector<int> rows;
    grid.MouseUp = [&](MouseButton button) {
        EXPECT_EQ(button, MouseButton::Right);
        rows.push_back(grid.mouseRow());
    };
    QTest::keyClick(&view, Qt::Key_Menu);
    QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
    const QPoint inRow2(5, view.rowViewportPosition(2) + 2);
    QContextMenuEvent overRow(QContextMenuEvent::Mouse, inRow2, view.viewport()->mapToGlobal(inRow2));
    QCoreApplication::sendEvent(view.viewport(), &overRow);
    grid.setRowCount(1);
    QContextMenuEvent below(QContextMenuEvent::Mouse, QPoint(5, 290), view.viewport()->mapToGlobal(QPoint(5, 290)));
    QCoreApplication::sendEvent(view.viewport(), &below);
    EXPECT_EQ(rows, (std::vector { 1, 1, 2, -1 }));
}

TEST_F(GridViewTest, KeysGoToTheFirstAndLastRowAndCopyTheRow)
{
    open(40);
    QTest::keyClick(&view, Qt::Key_End);
    EXPECT_EQ(grid.row(), 39);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Functional Status\tshort"));
    QTest::keyClick(&view, Qt::Key_Home);
    EXPECT_EQ(grid.row(), 0);
}

TEST_F(GridViewTest, DoubleClickAndEnterOpenARowOnly)
{
    open(2);
    grid.choose(1);
    int opened = 0;
    grid.DblClick = [&] { ++opened; };
    const QPoint below(100, view.viewport()->height() - 5);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, below);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, below);
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(grid.row(), 1);
    EXPECT_TRUE(view.selectionModel()->isRowSelected(1));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, QPoint(100, 5));
    EXPECT_EQ(opened, 1);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(opened, 2);
    grid.select(-1);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(opened, 2);
}

// sizeColumns() also applies to a view that is made later.
TEST_F(GridViewTest, SizedColumnsShowTheirContents)
{
    Grid names;
    names.setColumnCount(2);
    names.setColumnWidth(0, 600);
    names.setColumnWidth(1, 600);
    names.setRowCount(1);
    names.setText(0, 0, L"INFLUENZA, SEASONAL");
    names.setText(0, 1, Text(200, L'w'));
    names.sizeColumns();
    GridView sized(names, desktop, {}, nullptr);
    sized.resize(300, 200);
    sized.show();
    QTest::qWait(20);
    for (const int column : { 0, 1 })
        EXPECT_GE(sized.columnWidth(column), sized.sizeHintForIndex(sized.model()->index(0, column)).width());
    EXPECT_GT(sized.horizontalScrollBar()->maximum(), 0); // the last one can be reached
}

}
}
