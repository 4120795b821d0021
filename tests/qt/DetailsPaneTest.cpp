#include "qt/DetailsPane.h"

#include "qt/CourseView.h"
#include "qt/FieldList.h"
#include "tests/support/PanelFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QTest>

#include <gtest/gtest.h>

namespace health::test {
namespace {

constexpr TextView Records = L"3^^3261121.0815|81^MILD INTERMITTENT|1^93^49^420^YES\r\n"
                             L"2^1^3260922.143|7^MILD PERSISTENT|2^61^95^400^NO\r\n";

class DetailsPaneTest : public PanelFixture {
protected:
    void open()
    {
        host.encounter->visit = 81;
        host.encounter->shown = L"11/21/2026 08:15, Pediatric Clinic";
        host.session->reply(L"MEVVAST GET", Records);
        showPanel(12, { 1200, 800 });
        pane = view->findChild<DetailsPane*>();
        fields = pane->findChild<FieldList*>();
        course = pane->findChild<CourseView*>();
    }

    void choose(int row)
    {
        control.fgData.choose(row);
        QTest::qWait(10);
    }

    DetailsPane* pane = nullptr;
    FieldList* fields = nullptr;
    CourseView* course = nullptr;
};

TEST_F(DetailsPaneTest, ShowsTheSelectedRecordAndAsksTheServerNothing)
{
    open();
    EXPECT_EQ(pane->headingText(), "Select a record to read its fields and their course.");
    host.transcript.clear();
    choose(0);
    EXPECT_EQ(pane->headingText(), "Asthma Status 11/21/2026 08:15, Pediatric Clinic, 2 records since 09/22/2026");
    EXPECT_EQ(fields->text(true),
        "Severity: Mild Intermittent (was Mild Persistent)\nFEV 1: 93 (was 61)\nFEF 25-75: 49 (was 95)\n"
        "PEF/Best PF: 420 (was 400)\nEnv. Tobacco Smoke: Yes (was No)");
    EXPECT_TRUE(course->isVisible());
    choose(1); // the place is known for the current visit only
    EXPECT_EQ(
        pane->headingText(), "Asthma Status 09/22/2026 14:30, 2 records since 09/22/2026, Locked, cannot be changed");
    EXPECT_TRUE(host.calls().empty());
}

TEST_F(DetailsPaneTest, ShowsNothingOfAnotherPatient)
{
    open();
    choose(0);
    host.session->reply(L"MEVVAST GET", L"");
    host.patient->patientNumber = 13;
    control.patientEvents().Committed();
    EXPECT_EQ(fields->text(true), ""); // even before the events of the loop
    EXPECT_FALSE(course->isVisible());
    EXPECT_EQ(course->picture(), nullptr);
    host.patient->patientNumber = 0;
    control.patientEvents().Committed();
    QTest::qWait(10);
    EXPECT_EQ(pane->headingText(), "");
}

TEST_F(DetailsPaneTest, AReloadShowsTheNewValues)
{
    open();
    choose(0);
    host.session->reply(L"MEVVAST GET", L"3^^3261121.0815|81^SEVERE PERSISTENT|4^50\r\n");
    host.session->push(L"REFRESH");
    QTest::qWait(20);
    EXPECT_EQ(fields->text(true), "Severity: Severe Persistent\nFEV 1: 50");
    EXPECT_EQ(course->picture()->table().rows.size(), 1u);
}

TEST_F(DetailsPaneTest, FollowsTheRegistryWhenItWasRead)
{
    open();
    choose(0);
    shared.noteRegistryDue(L"12", L"11/30/2126");
    QEvent activated(QEvent::WindowActivate);
    QApplication::sendEvent(pane, &activated); // a form was closed
    QTest::qWait(10);
    EXPECT_TRUE(course->picture()->table().title.find(L"11/30/2126") != Text::npos);
}

TEST_F(DetailsPaneTest, ThePictureSelectsARecordInTheList)
{
    open();
    choose(0);
    Q_EMIT course->recordChosen(1);
    QTest::qWait(10);
    EXPECT_EQ(control.fgData.row(), 1);
    EXPECT_TRUE(pane->headingText().contains("Locked"));
}

TEST_F(DetailsPaneTest, IsHiddenAndFolded)
{
    open();
    choose(0);
    pane->action().trigger();
    EXPECT_FALSE(pane->isVisible());
    choose(1);
    pane->action().trigger();
    EXPECT_TRUE(pane->isVisible());
    EXPECT_TRUE(pane->headingText().contains("14:30")); // it has followed
    pane->hide(); // by whoever remembers the arrangement
    EXPECT_FALSE(pane->action().isChecked());
    pane->show();
    EXPECT_TRUE(pane->action().isChecked());
    QTest::qWait(10);
    const int height = pane->height();
    view->resize(1200, 300);
    QTest::qWait(10);
    EXPECT_TRUE(pane->isFolded());
    EXPECT_FALSE(fields->isVisible());
    EXPECT_LT(pane->height(), height / 2);
    view->resize(1200, 800);
    QTest::qWait(10);
    EXPECT_FALSE(pane->isFolded());
    EXPECT_NEAR(pane->height(), height, height / 4);
    QFont large = view->font();
    large.setPixelSize(48); // as low a window, measured by its text
    view->setFont(large);
    EXPECT_TRUE(pane->isFolded());
}

TEST_F(DetailsPaneTest, TheFirstFieldIsSelectedOnArrival)
{
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    choose(0);
    fields->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(fields->text(false), "Severity: Mild Intermittent (was Mild Persistent)");
    QTest::keyClick(fields, Qt::Key_Down);
    EXPECT_EQ(fields->text(false), "FEV 1: 93 (was 61)");
}

TEST_F(DetailsPaneTest, NarrowPanesStackFieldsAndPicture)
{
    open();
    choose(0);
    EXPECT_GT(course->geometry().left(), fields->geometry().right());
    EXPECT_EQ(course->geometry().top(), fields->geometry().top());
    view->resize(700, 800);
    QTest::qWait(10);
    EXPECT_GT(course->geometry().top(), fields->geometry().bottom());
    EXPECT_LT(course->geometry().left(), fields->geometry().right());
}

}
}
