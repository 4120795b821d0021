// Every command without a mouse.
#include "tests/window/HostWindowFixture.h"

namespace health::test {
namespace {

class Keyboard : public HostWindow {
protected:
    void SetUp() override
    {
        HostWindow::SetUp();
        QObject::connect(&watch, &QTimer::timeout, window.get(), [this] { watchDialogs(); });
        watch.start(WatchMilliseconds);
    }

    // Records the final titles of the dialogs in the order in which they come to the front; closes one that the keys
    // have left open.
    void watchDialogs()
    {
        QWidget* const modal = QApplication::activeModalWidget();
        idle = modal && !driver.isActive() ? idle + 1 : 0;
        if (modal && modal != seen)
            dialogs.append(QString());
        if (modal)
            dialogs.last() = modal->windowTitle();
        seen = modal;
        if (idle <= 3000 / WatchMilliseconds)
            return;
        ADD_FAILURE() << "left open: " << modal->windowTitle().toStdString();
        qobject_cast<QDialog*>(modal)->done(0);
        idle = 0;
    }

    template<typename Widget>
    void tabTo()
    {
        for (int i = 0; i < 20 && !qobject_cast<Widget*>(QApplication::focusWidget()); ++i) {
            pressKeys({ "key", "Tab" });
            QTest::qWait(30);
        }
        ASSERT_NE(qobject_cast<Widget*>(QApplication::focusWidget()), nullptr) << "Tab does not get there";
    }

    // Picks a patient and the latest visit.
    void pickPatientWithVisit(const QString& text, long number)
    {
        pressKeysInDialogs({ "key ctrl+o", "type --delay 20 " + text, "sleep 0.4", "key Return" });
        ASSERT_TRUE(
            waitUntil([&] { return window->context().patient().number == number && window->isActiveWindow(); }));
        pressKeysInDialogs({ "key ctrl+t", "key Down Return" });
        ASSERT_TRUE(waitUntil([&] { return window->context().visit().number != 0; }));
        ASSERT_TRUE(waitForKeys());
        expectDialogs("Select Patient|Select Visit");
    }

    // The titles since the last call.
    void expectDialogs(const QString& titles)
    {
        EXPECT_EQ(dialogs.join(u'|').toStdString(), titles.toStdString());
        dialogs.clear();
        seen = nullptr;
    }

    // Goes to the list of types, chooses one and presses Add; then the keys in what opens.
    void add(const QString& type, const QStringList& groups)
    {
        ASSERT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
        tabTo<QComboBox>();
        const auto* const types = window->findChild<QComboBox*>();
        const int index = types->findText(type);
        ASSERT_GT(index, 0) << type.toStdString();
        QStringList presses { "key", "Home" };
        for (int i = 0; i < index; ++i)
            presses.append("Down");
        pressKeys(presses);
        ASSERT_TRUE(waitUntil([&] { return types->currentIndex() == index; }));
        pressKeysInDialogs(QStringList { "key alt+a" } + groups);
        ASSERT_TRUE(waitForKeys());
    }

    int rowOf(const QString& label, const QString& part)
    {
        for (int row = 0; row < grid()->model()->rowCount(); ++row) {
            const auto cell = [&](int column) { return grid()->model()->index(row, column).data().toString(); };
            if (cell(0) == label && cell(1).contains(part))
                return row;
        }
        return -1;
    }

    void expectRow(const QString& label, const QString& part)
    {
        EXPECT_TRUE(waitUntil([&] { return rowOf(label, part) != -1; })) << part.toStdString() << " not in\n"
                                                                         << window->gridText().toStdString();
    }

    static constexpr int WatchMilliseconds = 20;
    QStringList dialogs;
    QWidget* seen = nullptr;
    int idle = 0;
    QTimer watch;
};

TEST_F(Keyboard, AddsARecordOfEachTypeOfAWoman)
{
    pickPatientWithVisit("hartley", 1);
    add("Asthma Status", { "key End Tab", "type 81", "key Return" });
    expectRow("Asthma Status", "Severity=Severe Persistent; FEV=81");
    // The row is highlighted: it belongs to the current visit.
    const int added = rowOf("Asthma Status", "FEV=81");
    EXPECT_TRUE(grid()->model()->index(added, 1).data(Qt::ForegroundRole).isValid());
    EXPECT_FALSE(grid()->model()->index(0, 1).data(Qt::ForegroundRole).isValid());
    expectDialogs("Add Asthma Record");

    add("Functional Status", { "key alt+b", "key Tab End", "key alt+o" });
    expectRow("Functional Status", "Dressing=Totally Dependent");
    expectDialogs("Enter Functional Status Record");

    // Enter in the item's field looks it up; Enter in the list takes what is selected.
    add("Refusal",
        { "key Home Down space", "key alt+e", "key Return", "key Down Return", "key alt+n", "type afraid",
            "key alt+a" });
    expectRow("Refusal", "afraid");
    expectDialogs("Enter Refusal|Lookup Exam|Enter Refusal");

    // A cleared count becomes 0, and a digit that is typed then follows it.
    add("Reproductive History", { "key ctrl+a Delete 6", "key alt+o" });
    expectRow("Reproductive", "G6P1");
    expectDialogs("Update Reproductive History");

    // Alt+Down opens the calendar; the arrows go by days, Enter picks.
    add("Treatment Contract", { "key space Tab", "key alt+Down", "key Left", "key Return", "key alt+o" });
    const QString yesterday = QDate::currentDate().addDays(-1).toString("MM/dd/yyyy");
    expectRow("Tx Contract", QStringLiteral("Initiated=") + yesterday);
}

TEST_F(Keyboard, AddsARecordOfEachTypeOfAnInfant)
{
    pickPatientWithVisit("pemberton,o", 5);
    add("Infant Feeding", { "key Home Down space", "key alt+o" });
    expectRow("Infant Feeding", "Mostly Breastfeeding");
    expectDialogs("Add Infant Feeding Record");

    // Enter presses OK from a field with an invalid value: a box says so, and nothing is saved. Enter closes the box.
    const QString before = window->gridText();
    add("Birth Measurements", { "key ctrl+a 7 0", "key Return", "key Return", "key Escape" });
    expectDialogs("Update Birth Measurements|Invalid Entry|Update Birth Measurements");
    EXPECT_EQ(window->gridText(), before);
    add("Birth Measurements", { "key ctrl+a", "type '7 3'", "key Return" });
    expectRow("Birth Measurements", "Birth Weight=7 lbs 3 oz");
    expectDialogs("Update Birth Measurements");

    // The host opens a record that the list does not show.
    pressKeysInDialogs({ "key Escape" });
    window->firstPanel()->openRecord(8, L"", std::to_wstring(window->context().visit().number));
    ASSERT_TRUE(waitForKeys());
    expectDialogs("Add Emergency Room Record");
}

TEST_F(Keyboard, EditsAndShowsTheVisitByTheMenuAndLeavesByEscape)
{
    pickPatientWithVisit("hartley", 1);
    const QString before = window->gridText();
    tabTo<QTableView>();
    const int row = rowOf("Functional Status", QString());
    ASSERT_GT(row, 0);
    pressKeys({ "key", "ctrl+Home" });
    for (int i = 0; i < row; ++i)
        pressKeys({ "key", "Down" });
    ASSERT_TRUE(waitUntil([&] { return grid()->currentIndex().row() == row; }));

    pressKeysInDialogs({ "key Menu", "key d", "key Escape" });
    ASSERT_TRUE(waitForKeys());
    expectDialogs("Visit Detail");

    // From the viewer to the editor and back without a change.
    pressKeysInDialogs({ "key shift+F10", "key e", "key alt+e", "key End", "key Escape" });
    ASSERT_TRUE(waitForKeys());
    expectDialogs("View Functional Status Record|Update Functional Status Record");

    pressKeysInDialogs({ "key shift+F10", "key l", "key Escape" });
    ASSERT_TRUE(waitForKeys());
    expectDialogs("Remove Record?");

    // From a lookup back to its form, and out.
    add("Treatment Contract",
        { "key space Tab Tab", "key ctrl+a", "type s", "key Return", "key Escape", "key Escape" });
    expectDialogs("Add Treatment Contract Record|Lookup Provider|Add Treatment Contract Record");
    EXPECT_EQ(window->gridText(), before);
}

}
}
