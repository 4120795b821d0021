#include "qt/Calendar.h"
#include "qt/DateView.h"
#include "qt/MonthView.h"
#include "tests/support/EveryForm.h"
#include "toolkit/QtText.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

namespace health::test {

namespace {

// A date's field in a window, on a desktop whose time is Sunday, March 15, 2026, 09:30.
struct ShownDate {
    ShownDate()
    {
        view = new DateView(date, host.desktop);
        (new QVBoxLayout(&window))->addWidget(view);
        view->setSpokenName("Due");
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        view->line()->setFocus();
    }

    MonthView& open(TextView value)
    {
        date.setValue(value);
        QTest::keyClick(view->line(), Qt::Key_Down, Qt::AltModifier);
        return *calendar()->findChild<MonthView*>();
    }
    QWidget* calendar() const
    {
        for (auto* const opened : view->findChildren<Calendar*>()) {
            if (opened->isVisible())
                return opened;
        }
        return nullptr;
    }

    ScriptedHost host;
    mevZvDate date;
    QWidget window;
    DateView* view;
};

void pressInCalendar(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(QApplication::activePopupWidget()->windowHandle(), key, modifiers);
}

QString textOf(Moment day) { return toQString(dateText(day)); }

}

TEST(Calendar, KeysMoveTheDay)
{
    ShownDate shown;
    const MonthView& days = shown.open(L"01/31/2026");
    EXPECT_EQ(textOf(days.day()), "01/31/2026");
    for (const auto& [keys, day] : { std::pair<const char*, const char*> { "Right", "02/01/2026" },
             { "Left", "01/31/2026" }, { "PgDown", "02/28/2026" }, { "Up", "02/21/2026" }, { "Down", "02/28/2026" },
             { "Home", "02/22/2026" }, { "End", "02/28/2026" }, { "Ctrl+PgDown", "02/28/2027" },
             { "Shift+PgUp", "02/28/2026" }, { "PgUp", "01/28/2026" }, { "X", "01/28/2026" } }) {
        const QKeyCombination key = QKeySequence(keys)[0];
        pressInCalendar(key.key(), key.keyboardModifiers());
        EXPECT_EQ(textOf(days.day()), day) << keys;
        EXPECT_TRUE(days.currentIndex().data(Qt::AccessibleTextRole).toString().contains(QString(day).right(4)));
        EXPECT_TRUE(shown.calendar()->findChild<QLabel*>()->text().endsWith(QString(day).right(4)));
    }
    pressInCalendar(Qt::Key_Return);
    EXPECT_EQ(shown.date.value(), L"01/28/2026");
    EXPECT_EQ(shown.calendar(), nullptr);
}

TEST(Calendar, StartsOnWhatTheFieldShowsElseToday)
{
    ShownDate shown;
    EXPECT_EQ(textOf(shown.open(L"").day()), "03/15/2026");
    pressInCalendar(Qt::Key_Escape);
    shown.date.type(L"t-30");
    QTest::mouseClick(shown.view->findChild<CalendarButton*>(), Qt::LeftButton);
    EXPECT_EQ(textOf(shown.calendar()->findChild<MonthView*>()->day()), "02/13/2026");
    shown.calendar()->close();
    shown.date.setEnabled(false);
    QTest::keyClick(shown.view->line(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(shown.calendar(), nullptr);
}

TEST(Calendar, RefusedDayCannotBePicked)
{
    ShownDate shown;
    shown.date.setAllowed([](Moment now) { return DateRange { momentOf(2026, 3, 2), now }; });
    MonthView& days = shown.open(L"03/15/2026");
    const auto click = [&](int day) {
        const int cell = day - 1; // the month begins on a Sunday
        const QModelIndex index = days.model()->index(cell / 7, cell % 7);
        QTest::mouseClick(days.viewport(), Qt::LeftButton, {}, days.visualRect(index).center());
    };
    EXPECT_EQ(shown.calendar()->findChildren<QLabel*>().last()->text(), "allowed: 03/02/2026 to today");
    pressInCalendar(Qt::Key_Right);
    pressInCalendar(Qt::Key_Return);
    ASSERT_EQ(shown.date.shown(), L"03/15/2026");
    click(1);
    EXPECT_EQ(textOf(days.day()), "03/01/2026");
    click(32); // an empty cell
    EXPECT_EQ(shown.date.shown(), L"03/15/2026");
    ASSERT_TRUE(shown.calendar());
    click(2);
    EXPECT_EQ(shown.date.value(), L"03/02/2026");
    EXPECT_EQ(shown.calendar(), nullptr);
}

TEST(Calendar, PickedDayKeepsTheTime)
{
    ShownDate shown;
    shown.date.setRequireTime(true);
    shown.open(L"03/14/2026 22:45");
    pressInCalendar(Qt::Key_Left);
    pressInCalendar(Qt::Key_Return);
    EXPECT_EQ(shown.date.value(), L"03/13/2026 22:45");
    shown.open(L"03/14/2026");
    pressInCalendar(Qt::Key_Return);
    EXPECT_EQ(shown.view->line()->text(), "03/14/2026 "); // the user types the time
}

TEST(Calendar, EscapeLeavesTheFormOpen)
{
    ShownForms forms;
    forms.show<frmTxc>([](QWidget& window) {
        auto* const line = window.findChild<CalendarButton*>()->parentWidget();
        line->setFocus();
        QTest::keyClick(line, Qt::Key_Down, Qt::AltModifier);
        ASSERT_TRUE(QApplication::activePopupWidget());
        pressInCalendar(Qt::Key_Escape);
        EXPECT_FALSE(QApplication::activePopupWidget());
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(window.focusWidget(), line);
    });
}

TEST(Calendar, DaysAreSpoken)
{
    ShownDate shown;
    shown.date.setAllowed([](Moment now) { return DateRange { {}, now }; });
    MonthView& days = shown.open(L"03/14/2026");
    QAccessibleInterface* const node = QAccessible::queryAccessibleInterface(&days);
    EXPECT_EQ(node->text(QAccessible::Name), "Due calendar");
    const auto current = [&] { return node->focusChild()->text(QAccessible::Name); };
    for (const auto& [key, name] : { std::pair { Qt::Key_Right, "Sunday, March 15, 2026, today" },
             { Qt::Key_Right, "Monday, March 16, 2026, not allowed" },
             { Qt::Key_PageDown, "Thursday, April 16, 2026, not allowed" } }) {
        pressInCalendar(key);
        EXPECT_EQ(current(), name);
    }
    days.goTo(momentOf(2026, 3, 10));
    EXPECT_EQ(current(), "Tuesday, March 10, 2026");
    const auto cell = [&](int row, int column) { return node->tableInterface()->cellAt(row, column); };
    EXPECT_TRUE(cell(1, 2)->state().selected && cell(1, 2)->state().focused && cell(1, 2)->state().selectable);
    EXPECT_FALSE(cell(1, 3)->state().selected);
    EXPECT_FALSE(cell(4, 0)->state().selectable); // the 29th is not allowed
    EXPECT_EQ(node->tableInterface()->columnDescription(1), "Monday");
    for (auto* const arrow : shown.calendar()->findChildren<QToolButton*>())
        EXPECT_FALSE(arrow->accessibleName().isEmpty());
}

// At any text size the field has room for its placeholder and the longest date.
TEST(DateView, FieldIsWideEnough)
{
    for (const int size : { 9, 13, 20 }) {
        for (const bool timed : { false, true }) {
            ShownDate shown;
            shown.date.setRequireTime(timed);
            QFont font = shown.window.font();
            font.setPointSize(size);
            shown.window.setFont(font);
            QLineEdit& line = *shown.view->line();
            line.resize(line.sizeHint());
            const int room =
                line.width() - line.textMargins().right() - 2 * line.style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
            for (const QString& text : { line.placeholderText(), QString(timed ? "12/30/2026 22:45" : "12/30/2026") })
                EXPECT_GE(room, line.fontMetrics().horizontalAdvance(text)) << size << text.toStdString();
            const QRect symbol = shown.view->findChild<CalendarButton*>()->geometry();
            EXPECT_TRUE(line.rect().contains(symbol)) << size;
            EXPECT_GE(symbol.left(), line.width() - line.textMargins().right() - 1);
        }
    }
}

}
