#include "qt/FindBar.h"

#include "qt/CountLine.h"
#include "qt/PillButton.h"
#include "qt/ViewState.h"
#include "tests/support/PanelFixture.h"
#include "toolkit/QtText.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace health::test {
namespace {

// The panel of a patient with seven records of three kinds.
class FindBarTest : public PanelFixture {
protected:
    void SetUp() override
    {
        host.session->reply(
            L"MEVVAST GET", L"1^^3260310|81^MILD\r\n2^^3260312|81^SEVERE\r\n3^^3250310|81^MODERATE\r\n");
        host.session->reply(L"MEVVTXC GET", L"4^^3260101|81^PAIN^^OAK,KATHÉ\r\n");
        host.session->reply(L"MEVREF GET", refusals);
        showPanel(12, { 1000, 500 });
        ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
        table = view->findChild<QTableView*>();
        bar = view->findChild<FindBar*>();
        words = bar->findChild<QLineEdit*>();
        table->setFocus();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void find(const QString& text)
    {
        QTest::keyClick(view->windowHandle(), Qt::Key_F, Qt::ControlModifier);
        ASSERT_EQ(QApplication::focusWidget(), words);
        QTest::keyClicks(words, text);
    }

    // The records' numbers as the list shows them; a number in brackets is selected.
    QString shown() const
    {
        QStringList rows;
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            const QString text = table->model()->index(row, 1).data().toString();
            for (int grid = 0; grid < control.fgData.rowCount(); ++grid) {
                if (toQString(control.fgData.text(grid, 1)) != text)
                    continue;
                const bool selected = table->selectionModel()->isRowSelected(row, {});
                EXPECT_EQ(selected, control.fgData.row() == grid) << "view and control select different rows";
                rows.append(QString(selected ? "[%1]" : "%1").arg(toQString(control.fgData.text(grid, 2))));
            }
        }
        return rows.join(u' ');
    }
    PillButton* chip(const QString& text) const
    {
        for (auto* const button : bar->findChildren<PillButton*>()) {
            if (button->text() == text && button->isVisible())
                return button;
        }
        return nullptr;
    }
    QString said() const
    {
        QStringList texts;
        for (const QWidget* const part :
            { static_cast<QWidget*>(view->findChild<CountLine*>()), static_cast<QWidget*>(bar) }) {
            for (const auto* const label : part->findChildren<QLabel*>()) {
                if (label->isVisible() && !label->text().isEmpty() && label->text() != "Order")
                    texts.append(label->text());
            }
        }
        return texts.join(u'|');
    }
    QComboBox* list(const QString& name) const
    {
        for (auto* const box : bar->findChildren<QComboBox*>()) {
            if (box->accessibleName() == name)
                return box;
        }
        return nullptr;
    }
    void answerBox(Qt::Key key)
    {
        QTimer::singleShot(50, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
    }

    static constexpr TextView refusals =
        L"6^^^EXAM^3^EYE^^^3240310^^^her eye\r\n7^^^EXAM^3^EAR^^^^^^\r\n8^^^EXAM^3^TOE^^^3260311^1^^\r\n";
    QTableView* table = nullptr;
    FindBar* bar = nullptr;
    QLineEdit* words = nullptr;
};

TEST_F(FindBarTest, TheCountFollowsTheTextSize)
{
    const auto* const count = view->findChild<CountLine*>()->findChild<QLabel*>();
    QFont large = view->font();
    large.setPixelSize(30);
    view->setFont(large);
    EXPECT_EQ(count->font().pixelSize(), 30);
}

TEST_F(FindBarTest, FindsAsTheUserTypesAndEscapeRestores)
{
    EXPECT_EQ(said(), "7 records");
    EXPECT_EQ(shown(), "1 2 3 4 6 7 8");
    const auto calls = host.calls();
    find("kathe");
    EXPECT_EQ(shown(), "4");
    EXPECT_TRUE(said().startsWith("1 of 7 records"));
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    QTest::keyClicks(words, "REFUSAL e");
    EXPECT_EQ(shown(), "6 7 8");
    QTest::keyClick(view->windowHandle(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(words->selectedText(), "REFUSAL e");
    QTest::keyClicks(words, "zz");
    EXPECT_EQ(shown(), "");
    EXPECT_NE(said().indexOf("No record found."), -1);
    list("Order")->setCurrentIndex(1);
    chip("Refusal")->click();
    press(Qt::Key_Escape);
    EXPECT_FALSE(bar->isOpen());
    EXPECT_EQ(shown(), "1 2 3 4 6 7 8");
    EXPECT_EQ(said(), "7 records");
    EXPECT_EQ(QApplication::focusWidget(), table);
    EXPECT_EQ(host.calls(), calls);
    find("");
    EXPECT_EQ(words->text(), "");
    EXPECT_TRUE(chip("All")->isChecked());
}

TEST_F(FindBarTest, TheMouseOpensAndClosesIt)
{
    auto* const button = view->findChild<CountLine*>()->findChild<PillButton*>();
    EXPECT_EQ(button->toolTip(), "Find records (Ctrl+F)");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(QApplication::focusWidget(), words);
    QTest::keyClicks(words, "mild");
    EXPECT_EQ(shown(), "1");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(bar->isOpen());
    EXPECT_EQ(shown(), "1 2 3 4 6 7 8");
}

TEST_F(FindBarTest, EscapeOfAClosedBarIsTheHosts)
{
    find("x");
    press(Qt::Key_Tab);
    press(Qt::Key_Escape);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(table, &escape);
    EXPECT_FALSE(escape.isAccepted());
}

TEST_F(FindBarTest, AFilterTakesTheSelectionOfAHiddenRowBack)
{
    control.fgData.choose(1);
    find("asthma");
    EXPECT_EQ(shown(), "1 [2] 3");
    EXPECT_TRUE(control.cmd[kalmevRepHistCtrl::Delete].isEnabled());
    QTest::keyClicks(words, " mild");
    EXPECT_EQ(shown(), "1");
    EXPECT_EQ(control.fgData.row(), -1);
    EXPECT_FALSE(control.cmd[kalmevRepHistCtrl::Delete].isEnabled());
    control.fgData.select(4); // the program may not select it either
    EXPECT_EQ(control.fgData.row(), -1);
    EXPECT_FALSE(control.cmd[kalmevRepHistCtrl::Edit].isEnabled());
    press(Qt::Key_Escape);
    EXPECT_EQ(shown(), "1 2 3 4 6 7 8"); // taken back, not put aside
}

TEST_F(FindBarTest, CommandsActOnTheRowThatIsSeenAsSelected)
{
    find("e");
    list("Order")->setCurrentIndex(1);
    EXPECT_EQ(shown(), "2 8 1 4 3 6 7");
    std::vector<Text> edited;
    control.cmd[kalmevRepHistCtrl::Edit].Click = [&] {
        edited.emplace_back(control.fgData.text(control.fgData.row(), 2));
    };
    table->setFocus();
    const auto place = [&](int row) { return table->visualRect(table->model()->index(row, 1)).center(); };
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place(3));
    EXPECT_EQ(shown(), "2 8 1 [4] 3 6 7");
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place(3));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    press(Qt::Key_Home);
    press(Qt::Key_Return);
    EXPECT_EQ(edited, (std::vector<Text> { L"4", L"3", L"2" }));
    QTimer::singleShot(50, [] { QApplication::activePopupWidget()->close(); });
    QContextMenuEvent menu(QContextMenuEvent::Mouse, place(5), table->viewport()->mapToGlobal(place(5)));
    QApplication::sendEvent(table->viewport(), &menu);
    EXPECT_EQ(shown(), "2 8 1 4 3 [6] 7");
    host.transcript.clear();
    answerBox(Qt::Key_Y);
    control.cmd[kalmevRepHistCtrl::Delete].click();
    EXPECT_EQ(host.calls(), Transcript { L"call MEVREF DEL(6)" });
}

TEST_F(FindBarTest, AReloadKeepsTheFilterAndHidesWhatNoLongerMatches)
{
    find("eye");
    press(Qt::Key_Down);
    EXPECT_EQ(shown(), "[6]");
    EXPECT_EQ(QApplication::focusWidget(), table);
    host.session->push(L"REFRESH");
    EXPECT_EQ(shown(), "[6]");
    // Another user changes the record, and it is hidden; the first row that the grid now has is another one.
    host.session->reply(L"MEVREF GET", L"6^^^EXAM^3^TOE^^^3240310^^^\r\n9^^^EXAM^3^EYE^^^3240310^^^\r\n");
    host.session->push(L"REFRESH");
    EXPECT_EQ(shown(), "9");
    EXPECT_EQ(control.fgData.row(), -1);
    EXPECT_EQ(words->text(), "eye");
    host.patient->patientNumber = 13;
    list("Order")->setCurrentIndex(1);
    control.patientEvents().Committed();
    EXPECT_EQ(words->text(), "");
    EXPECT_EQ(shown(), "2 1 4 3 6 9"); // the order stays
    EXPECT_TRUE(bar->isOpen());
    host.patient->patientNumber = 0;
    control.patientEvents().Committed();
    EXPECT_EQ(table->model()->rowCount(), 1); // says that no patient is selected
    EXPECT_EQ(said(), "");
}

TEST_F(FindBarTest, SaysThatASavedRecordIsHidden)
{
    find("asthma");
    host.session->reply(L"MEVREF GET", Text(refusals) + L"9^^^EXAM^3^NOSE^^^3260312^^^\r\n");
    shared.noteSaved(L"REF", L"", L"a refusal");
    host.session->push(L"REFRESH");
    EXPECT_EQ(shown(), "1 2 3");
    EXPECT_NE(said().indexOf("The saved record is hidden by the filter."), -1);
    chip("Show All")->click();
    EXPECT_EQ(shown(), "1 2 3 4 6 7 8 9");
    EXPECT_EQ(said(), "8 records");
    EXPECT_TRUE(bar->isOpen());
}

TEST_F(FindBarTest, ChipsCountAndFilterByKind)
{
    find("");
    EXPECT_EQ(chip("Refusal")->accessibleName(), "Refusal, 3 records");
    QTest::mouseClick(chip("Refusal"), Qt::LeftButton);
    EXPECT_EQ(shown(), "6 7 8");
    QTest::mouseClick(chip("Tx Contract"), Qt::LeftButton);
    EXPECT_EQ(shown(), "4 6 7 8");
    EXPECT_FALSE(chip("All")->isChecked());
    words->setText("mild");
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(chip("Asthma Status")->accessibleName(), "Asthma Status, 1 record");
    QTest::mouseClick(chip("All"), Qt::LeftButton);
    EXPECT_EQ(shown(), "1");
    QTest::mouseClick(chip("All"), Qt::LeftButton);
    EXPECT_TRUE(chip("All")->isChecked());
    host.session->reply(L"MEVREF GET", L"");
    QTest::mouseClick(chip("Refusal"), Qt::LeftButton);
    host.session->push(L"REFRESH");
    ASSERT_NE(chip("Refusal"), nullptr); // else nothing would show why the list is empty
    EXPECT_TRUE(chip("Refusal")->isChecked());
}

TEST_F(FindBarTest, YearsSayThatRecordsWithoutADateAreHidden)
{
    find("");
    QComboBox* const years = list("Year");
    EXPECT_EQ(years->count(), 4);
    years->setCurrentIndex(years->findText("2026"));
    EXPECT_EQ(shown(), "1 2 4 8");
    EXPECT_NE(said().indexOf("1 record without a date is not shown."), -1);
    QTest::mouseClick(chip("Asthma Status"), Qt::LeftButton);
    EXPECT_EQ(shown(), "1 2");
    EXPECT_EQ(said().indexOf("without a date"), -1);
}

TEST_F(FindBarTest, KeysAloneReachEverything)
{
    find("");
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), chip("All"));
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_EQ(shown(), "1 2 3");
    press(Qt::Key_Tab); // past the other chips
    EXPECT_EQ(QApplication::focusWidget(), list("Year"));
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), list("Order"));
    press(Qt::Key_Down);
    EXPECT_EQ(shown(), "2 1 3");
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), table);
    press(Qt::Key_Backtab);
    press(Qt::Key_Backtab);
    press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), chip("Asthma Status"));
    press(Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget(), words);
}

TEST_F(FindBarTest, EnterInTheFieldOpensNoForm)
{
    int edits = 0;
    control.cmd[kalmevRepHistCtrl::Edit].Click = [&] { ++edits; };
    find("asthma");
    press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), table);
    EXPECT_EQ(shown(), "[1] 2 3");
    press(Qt::Key_Return); // a hurried one
    EXPECT_EQ(edits, 0);
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    press(Qt::Key_Return);
    EXPECT_EQ(edits, 1);
}

TEST_F(FindBarTest, HostsRememberTheArrangementButNoWords)
{
    find("secret");
    list("Order")->setCurrentIndex(2);
    const Text state = viewStateText(view->viewState());
    EXPECT_EQ(state, L"order=kind;find=open;details=open;share=40");
    press(Qt::Key_Escape);
    EXPECT_EQ(view->viewState(), ViewState());
    view->setViewState(viewStateOf(state));
    EXPECT_TRUE(bar->isOpen());
    EXPECT_EQ(shown(), "2 1 3 4 8 6 7");
    view->setViewState(viewStateOf(L"order=newest")); // the bar would be closed
    EXPECT_EQ(shown(), "1 2 3 4 6 7 8");
    const ViewState odd = viewStateOf(L"share=9999;order=;find=perhaps;;=;details=closed;colour=red");
    EXPECT_EQ(odd, (ViewState { .detailsAreOpen = false, .detailsShare = 90 }));
}

TEST_F(FindBarTest, NothingOverlapsInANarrowPanel)
{
    find("a");
    for (const bool open : { true, false }) {
        for (int width = 1000; width > 250; width -= 50) {
            view->resize(width, 500);
            QTest::qWait(1);
            const auto* const types = view->findChild<QComboBox*>();
            for (const auto* const label : view->findChildren<QLabel*>()) {
                if (!label->isVisible() || !label->text().contains("records"))
                    continue;
                EXPECT_GT(label->mapTo(view.get(), QPoint()).x(), types->geometry().right()) << width;
                EXPECT_GE(label->width(), label->sizeHint().width()) << width;
            }
            if (open) {
                EXPECT_LE(bar->geometry().bottom(), table->parentWidget()->geometry().top()) << width;
                EXPECT_LE(list("Order")->mapTo(bar, list("Order")->rect().bottomRight()).x(), bar->width()) << width;
            }
        }
        press(Qt::Key_Escape);
    }
}

}
}
