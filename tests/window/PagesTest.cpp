// What the reference host adds around the panels: their menus, the patients seen before, the page of emergency visits.
#include "tests/window/HostWindowFixture.h"

#include "api/PanelActions.h"
#include "host/windows/EmergencyVisits.h"
#include "host/windows/PanelPages.h"

#include <QLabel>
#include <QMenuBar>

namespace health::test {
namespace {

class Pages : public HostWindow {
protected:
    QMenu* menu(const QString& caption)
    {
        for (const QAction* const action : window->menuBar()->actions()) {
            if (action->text().remove(u'&') == caption)
                return action->menu();
        }
        return nullptr;
    }

    static QStringList entries(QMenu& menu)
    {
        Q_EMIT menu.aboutToShow();
        QStringList texts;
        for (const QAction* const action : menu.actions())
            texts.append(action->isSeparator() ? QString() : action->text());
        return texts;
    }

    EmergencyVisits& page()
    {
        if (!window->findChild<EmergencyVisits*>())
            action("Emergency Visits...")->trigger();
        return *window->findChild<EmergencyVisits*>();
    }

    static QTableWidget& list(QWidget& page) { return *page.findChild<QTableWidget*>(); }
};

TEST_F(Pages, MenusShowTheActionsOfThePanelThatHadTheFocusLast)
{
    pressKeys({ "key", "ctrl+n" });
    const auto recordLists = [this] {
        QList<QTableView*> found = window->findChildren<QTableView*>();
        found.removeIf([](QTableView* table) { return table->accessibleName() != "Personal health records"; });
        return found;
    };
    ASSERT_TRUE(waitUntil([&] { return recordLists().size() == 2; }));
    auto& pages = *window->findChild<PanelPages*>();
    ASSERT_TRUE(window->context().selectPatient(1));
    const QList<QTableView*> lists = recordLists();
    int done = 0;
    auto* const print = new QAction("Print Test", pages.current());
    QObject::connect(print, &QAction::triggered, window.get(), [&] { ++done; });
    print->setProperty(MenuProperty, "File");
    QWidget* const first = pages.current();
    first->addAction(print);
    QTableView* const inside = first->isAncestorOf(lists[0]) ? lists[0] : lists[1];
    QTableView* const beside = inside == lists[0] ? lists[1] : lists[0];

    for (QTableView* const focused : { inside, beside, inside }) {
        focused->setFocus();
        EXPECT_EQ(entries(*menu("File")).contains("Print Test"), focused == inside);
        EXPECT_FALSE(entries(*menu("View")).contains("Print Test"));
        EXPECT_EQ(entries(*menu("File")).last(), "&Quit");
    }
    // A menu of its own appears with its first action, and goes with its last.
    const auto isListed = [&] { return entries(*menu("Edit")).contains("Copy Test"); };
    EXPECT_FALSE(isListed());
    const bool wasVisible = menu("Edit")->menuAction()->isVisible();
    auto copy = std::make_unique<QAction>("Copy Test");
    copy->setProperty(MenuProperty, "Edit");
    first->addAction(copy.get());
    EXPECT_TRUE(waitUntil([&] { return menu("Edit")->menuAction()->isVisible(); }));
    EXPECT_TRUE(isListed());
    copy.reset();
    EXPECT_TRUE(waitUntil([&] { return menu("Edit")->menuAction()->isVisible() == wasVisible; }));
    delete print;
    EXPECT_FALSE(entries(*menu("File")).contains("Print Test"));
}

// A painting that requests the next one would keep a processor busy.
TEST_F(Pages, NothingIsPaintedWhileNothingHappens)
{
    struct Counter : QObject {
        int paintings = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paintings += event->type() == QEvent::Paint;
            return false;
        }
    } counter;
    ASSERT_TRUE(window->context().selectPatient(1));
    pressKeys({ "key", "Home" });
    QTest::qWait(1000);
    qApp->installEventFilter(&counter);
    QTest::qWait(1000);
    EXPECT_LT(counter.paintings, 20); // a cursor may blink
}

TEST_F(Pages, PatientSeenBeforeIsPickedByEnterUntilAnotherUserSignsOn)
{
    for (const long patient : { 6, 13, 5 })
        ASSERT_TRUE(window->context().selectPatient(patient));
    QStringList rows;
    const auto readRows = [&] {
        rows.clear();
        const QTableWidget& shown = list(*QApplication::activeModalWidget());
        for (int row = 0; row < 4; ++row)
            rows.append(shown.item(row, 1)->text() + shown.item(row, 0)->text().section(u' ', 0, 0));
    };
    doInTurn({ readRows, [] { pressKeys({ "key", "Return" }); } });
    action("Select Patient...")->trigger();
    EXPECT_EQ(rows[0], "Seen");
    EXPECT_TRUE(rows[1].startsWith("13")) << rows.join(u'|').toStdString();
    EXPECT_TRUE(rows[2].startsWith("6"));
    EXPECT_EQ(rows[3], "All");
    EXPECT_EQ(window->context().patient().number, 13);

    window->context().session().signOn(L"HALTON,PIERS");
    doInTurn({ readRows, [] { pressKeys({ "key", "Escape" }); } });
    action("Select Patient...")->trigger();
    EXPECT_NE(rows[0], "Seen");
}

TEST_F(Pages, EmergencyVisitsAreEditedAndAddedByKeysAndMouse)
{
    EXPECT_FALSE(action("Emergency Visits...")->isEnabled());
    ASSERT_TRUE(window->context().selectPatient(16));
    page();
    ASSERT_EQ(list(page()).rowCount(), 1);
    EXPECT_EQ(list(page()).item(0, 0)->text().size(), 16) << "date and time";
    QStringList forms;
    const auto note = [&] {
        forms.append(QApplication::activeModalWidget() ? QApplication::activeModalWidget()->windowTitle() : "none");
        pressKeys({ "key", "Escape" });
    };
    doInTurn({ note });
    QTest::keyClick(&list(page()), Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return forms.size() == 1 && !QApplication::activeModalWidget(); }));
    doInTurn({ note });
    const QPoint row = list(page()).visualItemRect(list(page()).item(0, 1)).center();
    QTest::mouseClick(list(page()).viewport(), Qt::LeftButton, {}, row); // a double click alone lacks the first press
    QTest::mouseDClick(list(page()).viewport(), Qt::LeftButton, {}, row);
    EXPECT_TRUE(waitUntil([&] { return forms.size() == 2 && !QApplication::activeModalWidget(); }));
    EXPECT_FALSE(forms.contains("none")) << forms.join(u'|').toStdString();
    EXPECT_EQ(forms[0], forms[1]);

    // It follows the patient, and closes with the last one.
    ASSERT_TRUE(window->context().selectPatient(1));
    EXPECT_EQ(list(page()).rowCount(), 0);
    EXPECT_FALSE(button(page(), "Edit")->isEnabled());
    EXPECT_EQ(button(page(), "Edit")->toolTip(), "Select a record in the list.");
    ASSERT_TRUE(window->context().selectPatient(16));
    EXPECT_EQ(list(page()).rowCount(), 1);
    ASSERT_TRUE(window->context().selectPatient(0));
    EXPECT_FALSE(page().isVisible());
}

}
}
