#include "qt/PanelView.h"

#include "tests/support/PanelFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMessageBox>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace health::test {
namespace {

class PanelViewTest : public PanelFixture {
protected:
    void turnWheel(QWidget& widget)
    {
        QWheelEvent wheel(QPointF(5, 5), widget.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton, {},
            Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&widget, &wheel);
    }
};

TEST_F(PanelViewTest, ReloadKeepsTheFocusOnACommand)
{
    host.session->reply(L"MEVREF GET", L"8^^^EXAM^3^X\r\n");
    showPanel(12);
    control.fgData.choose(0);
    auto* const edit = view->findChildren<QPushButton*>()[kalmevRepHistCtrl::Edit];
    edit->setFocus();
    host.session->push(L"REFRESH");
    EXPECT_EQ(view->focusWidget(), edit);
    host.session->reply(L"MEVREF GET", L""); // somebody deleted it
    host.session->push(L"REFRESH");
    EXPECT_EQ(view->focusWidget(), view->findChild<QTableView*>());
}

TEST_F(PanelViewTest, NothingIsCutOffAtAnyTextSize)
{
    showPanel(12);
    for (const double factor : { 1.0, 1.5, 2.0 }) {
        QFont font = QApplication::font();
        font.setPointSizeF(font.pointSizeF() * factor);
        view->setFont(font);
        view->resize(static_cast<int>(900 * factor), 600);
        QTest::qWait(10);
        for (const auto* button : view->findChildren<QPushButton*>()) {
            EXPECT_GE(button->width(), button->sizeHint().width()) << factor;
            EXPECT_GE(button->height(), button->sizeHint().height() - 1) << factor;
            EXPECT_LE(button->geometry().right(), view->width());
        }
        const auto* const table = view->findChild<QTableView*>();
        EXPECT_GE(table->columnWidth(0), table->fontMetrics().horizontalAdvance("Functional Status")) << factor;
        EXPECT_LT(table->geometry().right(), view->findChild<QPushButton*>()->geometry().left());
        EXPECT_GE(view->findChild<QComboBox*>()->height(), table->fontMetrics().height());
    }
}

TEST_F(PanelViewTest, WheelChangesTheListOfTypesOnlyWithTheFocus)
{
    showPanel(12);
    auto* const types = view->findChild<QComboBox*>();
    view->activateWindow();
    view->findChild<QTableView*>()->setFocus();
    turnWheel(*types);
    EXPECT_EQ(types->currentIndex(), 0);
    types->setFocus();
    turnWheel(*types);
    EXPECT_EQ(types->currentIndex(), 1);
    EXPECT_EQ(control.cboType.listIndex(), 1);
    EXPECT_TRUE(control.cmd[kalmevRepHistCtrl::Add].isEnabled());
    EXPECT_TRUE(view->findChild<QPushButton*>()->isEnabled());
}

TEST_F(PanelViewTest, ContextMenuShowsVisitDetailAndCopies)
{
    host.session->reply(L"MEVVELD GET", L"1^^3260310|81^NEEDS HELP\r\n");
    host.session->reply(L"MEVUTL GETRPT", L"REPORT\r\n");
    showPanel(12);
    control.fgData.choose(0);
    const auto choose = [&](int entry) {
        QStringList entries;
        QTimer::singleShot(50, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (const QAction* action : menu->actions())
                entries.append(action->isSeparator() ? QStringLiteral("-")
                                                     : action->text() + QLatin1String(action->isEnabled() ? "+" : ""));
            menu->setActiveAction(menu->actions().at(entry));
            QTest::keyClick(menu, Qt::Key_Return);
        });
        QTest::keyClick(view->findChild<QTableView*>(), Qt::Key_F10, Qt::ShiftModifier);
        return entries;
    };
    EXPECT_EQ(choose(4),
        (QStringList { "&Add Record", "&Edit Record+", "De&lete Record+", "-", "&Display Visit Detail+", "&Copy+",
            "Copy with &Kind and Date+", "Copy All &Shown+", "-", "Add Record: Select a form above the list.+" }));
    EXPECT_EQ(host.lines(L"preview"), Transcript { L"preview [Visit Detail||||80|11] REPORT\r\n" });
    QApplication::clipboard()->clear();
    choose(5);
    EXPECT_EQ(QApplication::clipboard()->text(), "Functional Status\t03/10/2026: Toileting=Needs Help");
    choose(7);
    EXPECT_EQ(QApplication::clipboard()->text(), "Functional Status\t2026-03-10\tToileting=NEEDS HELP");
}

TEST_F(PanelViewTest, GreyCommandSaysWhyAtTheMouseByItsKeyAndWhenPressed)
{
    host.session->reply(L"MEVVELD GET", L"1^1^3260310|81^NEEDS HELP\r\n2^^3260310|81^NEEDS HELP\r\n");
    showPanel(12);
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    control.fgData.choose(0);
    const QPushButton* edit = nullptr;
    for (const QPushButton* const button : view->findChildren<QPushButton*>())
        edit = button->text() == "&Edit" ? button : edit;
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->toolTip(), "This record is locked.");
    EXPECT_EQ(edit->accessibleDescription(), "This record is locked.");
    const auto said = [this] { return std::exchange(host.transcript, {}).size(); };
    said();
    QTest::keyClick(view->windowHandle(), Qt::Key_E, Qt::AltModifier);
    EXPECT_EQ(said(), 1U);
    const QPoint place = edit->geometry().center();
    QTest::mouseClick(view->windowHandle(), Qt::LeftButton, {}, place);
    EXPECT_EQ(said(), 1U);
    int pressed = 0;
    control.cmd[kalmevRepHistCtrl::Edit].Click = [&] { ++pressed; };
    control.fgData.choose(1);
    EXPECT_EQ(edit->toolTip(), "");
    QTest::keyClick(view->windowHandle(), Qt::Key_E, Qt::AltModifier);
    QTest::mouseClick(view->windowHandle(), Qt::LeftButton, {}, place);
    EXPECT_EQ(pressed, 2);
}

TEST_F(PanelViewTest, MessageBoxesHaveTheirKindTitleAndDefault)
{
    QStringList seen; // title, text, default button, icon
    const auto answerWith = [&seen](Qt::Key key) {
        QTimer::singleShot(50, [&seen, key] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            seen = { box->windowTitle(), box->text(), box->defaultButton() ? box->defaultButton()->text() : QString(),
                QString::number(box->icon()) };
            QTest::keyClick(box, key);
        });
    };
    answerWith(Qt::Key_Escape);
    Text title = L"Remove Record?";
    EXPECT_FALSE(shared.ConfirmBox(L"Sure?\r\nReally?", title));
    EXPECT_EQ(
        seen, (QStringList { "Remove Record?", "Sure?\nReally?", "&No", QString::number(QMessageBox::Question) }));
    answerWith(Qt::Key_Y);
    EXPECT_TRUE(shared.ConfirmBox(L"Sure?", title));
    answerWith(Qt::Key_Return);
    shared.ErrorBox(L"<b>plain</b>", L"");
    EXPECT_EQ(seen, (QStringList { "Error", "<b>plain</b>", "", QString::number(QMessageBox::Critical) }));
}

TEST_F(PanelViewTest, AccessKeysActInThePanelThatHadTheFocusLast)
{
    host.session->reply(L"MEVREF GET", L"8^^^EXAM^3^X\r\n");
    QWidget window;
    kalmevRepHistCtrl other { shared, host };
    showPanel(12);
    other.UserControl_Initialize();
    PanelView second(other, desktop);
    std::vector<int> pressed;
    for (kalmevRepHistCtrl* const panel : { &control, &other })
        panel->cmd[kalmevRepHistCtrl::Edit].Click = [&, panel] { pressed.push_back(panel == &other); };
    view->setParent(&window);
    second.setParent(&window);
    const auto detach = qScopeGuard([this] { view->setParent(nullptr); }); // the window must not delete the view
    second.move(900, 0);
    window.resize(1800, 500);
    window.show();
    view->show();
    second.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    control.fgData.choose(0);
    other.fgData.choose(0);
    const auto selection = [](const QWidget& panel) {
        return panel.findChild<QTableView*>()->palette().color(QPalette::Highlight);
    };
    for (PanelView* const panel : { &second, view.get(), &second }) {
        panel->findChild<QTableView*>()->setFocus();
        QTest::keyClick(window.windowHandle(), Qt::Key_E, Qt::AltModifier);
        ASSERT_FALSE(pressed.empty());
        EXPECT_EQ(pressed.back(), panel == &second);
        EXPECT_EQ(selection(*panel), QApplication::palette().color(QPalette::Active, QPalette::Highlight));
        EXPECT_NE(selection(panel == &second ? *view : second), selection(*panel));
    }
    EXPECT_EQ(pressed.size(), 3u);
}

}
}
