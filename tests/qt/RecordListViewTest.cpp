#include "qt/RecordListView.h"

#include "qt/AwayStrip.h"
#include "tests/support/PanelFixture.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace health::test {
namespace {

// The panel's list on a scripted host.
class RecordListViewTest : public PanelFixture {
protected:
    void open(long patient)
    {
        showPanel(patient);
        list = dynamic_cast<RecordListView*>(view->findChild<QTableView*>());
        ASSERT_NE(list, nullptr);
    }

    void load(TextView refusals)
    {
        host.session->reply(L"MEVREF GET", refusals);
        host.session->push(L"REFRESH");
    }

    // What a screen reader adds to a row.
    QString described(int row) const
    {
        return list->model()->index(row, 0).data(Qt::AccessibleDescriptionRole).toString();
    }

    RecordListView* list = nullptr;
};

TEST_F(RecordListViewTest, MarksAreSpokenUntilTheRowHasBeenLookedAt)
{
    host.session->reply(L"MEVREF GET", L"1^^^A^^^^^3260901\r\n2^^^B^^^^^3260902\r\n3^^^C^^^^^3260903^1\r\n");
    open(12);
    EXPECT_EQ(described(0), "");
    EXPECT_EQ(described(2), "Locked, cannot be changed");
    load(L"2^^^X^^^^^3260902\r\n3^^^C^^^^^3260903^1\r\n4^^^D\r\n");
    EXPECT_EQ(
        described(0), "Changed since you last looked. 1 record is gone since you last looked: Refusal 09/01/2026");
    EXPECT_EQ(described(1), "Locked, cannot be changed");
    EXPECT_EQ(described(2), "New since you last looked");
    control.fgData.choose(2);
    load(L"2^^^X^^^^^3260902\r\n3^^^C^^^^^3260903^1\r\n4^^^D\r\n");
    EXPECT_EQ(described(2), "New since you last looked"); // still being looked at
    control.fgData.choose(1);
    EXPECT_EQ(described(2), "");
    EXPECT_NE(described(0), "");
}

TEST_F(RecordListViewTest, ALabelThatIsTooLongTakesAnotherLine)
{
    host.patient->patientSex = L"M";
    host.patient->patientAge = L"4";
    host.session->reply(L"MEVBMSR GET", L"7");
    host.session->reply(L"MEVREF GET", L"1^^^A\r\n");
    open(12);
    const QFontMetrics metrics = list->fontMetrics();
    ASSERT_LT(metrics.horizontalAdvance("Measurements"), list->columnWidth(0));
    ASSERT_GT(metrics.horizontalAdvance("Birth Measurements"), list->columnWidth(0));
    EXPECT_GE(list->rowHeight(0), list->rowHeight(1) + metrics.height());
}

TEST_F(RecordListViewTest, TheCurrentVisitIsSpoken)
{
    host.session->reply(L"MEVVELD GET", L"1^^3260310|81^NEEDS HELP\r\n");
    open(12);
    EXPECT_EQ(described(0), "");
    host.encounter->visit = 81;
    control.encounterEvents().Committed();
    QTest::qWait(10);
    EXPECT_EQ(described(0), "Record of the current visit");
    EXPECT_EQ(list->model()->index(0, 1).data().toString(), "03/10/2026: Toileting=Needs Help");
}

TEST_F(RecordListViewTest, WhenTheSelectedRowIsGoneTheFocusStaysAtItsPlace)
{
    host.session->reply(L"MEVREF GET", L"1^^^A\r\n2^^^B\r\n3^^^C\r\n4^^^D\r\n");
    open(12);
    list->setFocus();
    control.fgData.choose(1);
    load(L"1^^^A\r\n3^^^C\r\n4^^^D\r\n");
    EXPECT_EQ(control.fgData.row(), -1); // the commands act on no other record
    EXPECT_EQ(list->currentIndex().row(), 1);
    EXPECT_FALSE(list->selectionModel()->hasSelection());
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(control.fgData.row(), 2);
    load(L"1^^^A\r\n3^^^C\r\n");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->currentIndex()).center());
    EXPECT_EQ(control.fgData.row(), 1); // the commands act on the row that looks selected
    load(L"1^^^A\r\n");
    EXPECT_EQ(list->currentIndex().row(), 0);
    QTest::keyClick(list, Qt::Key_Down); // there is no next row
    EXPECT_EQ(control.fgData.row(), 0);
    host.patient->patientNumber = 13;
    control.patientEvents().Committed();
    EXPECT_FALSE(list->currentIndex().isValid());
}

TEST_F(RecordListViewTest, AnEmptyListSaysWhy)
{
    open(0);
    EXPECT_EQ(list->state().title, "Select a patient");
    host.patient->patientNumber = 12;
    control.patientEvents().Committed();
    EXPECT_EQ(list->state().title, "No personal health records");
    EXPECT_EQ(list->state().lines.size(), 2);
    load(L"1^^^A\r\n");
    EXPECT_TRUE(list->state().isEmpty());
}

TEST_F(RecordListViewTest, SaysThatTheServerIsNotConnected)
{
    host.session->reply(L"MEVREF GET", L"1^^^A\r\n");
    open(12);
    EXPECT_EQ(view->findChild<AwayStrip*>(), nullptr);
    host.session->push(L"CONNECTION", L"8");
    auto* const strip = view->findChild<AwayStrip*>();
    ASSERT_NE(strip, nullptr);
    EXPECT_TRUE(strip->isVisible());
    EXPECT_TRUE(strip->accessibleDescription().contains(list->loadedAt().toString("HH:mm")));
    EXPECT_EQ(control.fgData.rowCount(), 1);
    strip->findChild<QPushButton*>()->click();
    EXPECT_EQ(host.transcript.back(), L"event TRYNOW ");
    host.session->push(L"CONNECTION", L"0");
    EXPECT_FALSE(strip->findChild<QPushButton*>()->isEnabled());
    host.session->push(L"CONNECTION", L"");
    EXPECT_FALSE(strip->isVisible());
    host.session->push(L"CONNECTION", L"8");
    ASSERT_TRUE(strip->accessibleDescription().startsWith("These are the records as of"));
    QTimer closing; // the box that says why
    QObject::connect(&closing, &QTimer::timeout, [] {
        if (QWidget* const box = QApplication::activeModalWidget())
            box->close();
    });
    closing.start(10);
    load(L"-1^No access.\r\n");
    closing.stop();
    QTest::qWait(10);
    EXPECT_EQ(strip->accessibleDescription(), "Nothing can be saved until it answers."); // nor are there records
    load(L"1^^^A\r\n"); // it has answered
    EXPECT_FALSE(strip->isVisible());
    control.UserControl_Terminate();
    EXPECT_EQ(host.session->subscriptions(), L"");
}

}
}
