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

    // Notes the dialogs in the order in which they come to the front, by the title that they have in the end; closes
    // one that the keys did not close.
    void watchDialogs()
    {
        QWidget* const modal = QApplication::activeModalWidget();
        idle = modal && keys.state() == QProcess::NotRunning ? idle + 1 : 0;
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
            pressKeys({ QStringLiteral("key"), QStringLiteral("Tab") });
            QTest::qWait(30);
        }
        ASSERT_NE(qobject_cast<Widget*>(QApplication::focusWidget()), nullptr) << "Tab does not get there";
    }

    // Picks a patient, and the patient's latest visit.
    void pickPatientWithVisit(const QString& text, long number)
    {
        pickPatient(text);
        ASSERT_TRUE(
            waitUntil([&] { return window->context().patient().number == number && window->isActiveWindow(); }));
        pressKeysInDialogs({ QStringLiteral("key ctrl+t"), QStringLiteral("key Down Return") });
        ASSERT_TRUE(waitUntil([&] { return window->context().visit().number != 0; }));
        ASSERT_TRUE(waitForKeys());
        expectDialogs(QStringLiteral("Select Patient|Select Visit"));
    }

    // By title, in the order in which they came to the front, since the last time.
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
        QStringList keys { QStringLiteral("key"), QStringLiteral("Home") };
        for (int i = 0; i < index; ++i)
            keys.append(QStringLiteral("Down"));
        pressKeys(keys);
        ASSERT_TRUE(waitUntil([&] { return types->currentIndex() == index; }));
        pressKeysInDialogs(QStringList { QStringLiteral("key alt+a") } + groups);
        ASSERT_TRUE(waitForKeys());
    }

    int rowOf(const QString& label, const QString& part)
    {
        for (int row = 0; row < grid()->model()->rowCount(); ++row) {
            if (grid()->model()->index(row, 0).data().toString() == label && summary(row).contains(part))
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
    pickPatientWithVisit(QStringLiteral("hartley"), 1);
    add(QStringLiteral("Asthma Status"),
        { QStringLiteral("key End Tab"), QStringLiteral("type 81"), QStringLiteral("key Return") });
    expectRow(QStringLiteral("Asthma Status"), QStringLiteral("Severity=Severe Persistent; FEV=81"));
    expectDialogs(QStringLiteral("Add Asthma Record"));

    add(QStringLiteral("Functional Status"),
        { QStringLiteral("key alt+b"), QStringLiteral("key Tab End"), QStringLiteral("key alt+o") });
    expectRow(QStringLiteral("Functional Status"), QStringLiteral("Dressing=Totally Dependent"));
    expectDialogs(QStringLiteral("Enter Functional Status Record"));

    // Enter in the item's field looks it up; Enter in the list takes what is selected.
    add(QStringLiteral("Refusal"),
        { QStringLiteral("key Home Down space"), QStringLiteral("key alt+e"), QStringLiteral("key Return"),
            QStringLiteral("key Down Return"), QStringLiteral("key alt+n"), QStringLiteral("type afraid"),
            QStringLiteral("key alt+a") });
    expectRow(QStringLiteral("Refusal"), QStringLiteral("afraid"));
    expectDialogs(QStringLiteral("Enter Refusal|Lookup Exam|Enter Refusal"));

    // A count that was cleared is 0, and the digit that is typed then stands behind it.
    add(QStringLiteral("Reproductive History"), { QStringLiteral("key ctrl+a Delete 6"), QStringLiteral("key alt+o") });
    expectRow(QStringLiteral("Reproductive"), QStringLiteral("G6P1"));
    expectDialogs(QStringLiteral("Update Reproductive History"));

    // Alt+Down opens the calendar; the arrows go by days, Enter picks.
    add(QStringLiteral("Treatment Contract"),
        { QStringLiteral("key space Tab"), QStringLiteral("key alt+Down"), QStringLiteral("key Left"),
            QStringLiteral("key Return"), QStringLiteral("key alt+o") });
    const QString yesterday = QDate::currentDate().addDays(-1).toString(QStringLiteral("MM/dd/yyyy"));
    expectRow(QStringLiteral("Tx Contract"), QStringLiteral("Initiated=") + yesterday);
}

TEST_F(Keyboard, AddsARecordOfEachTypeOfAnInfant)
{
    pickPatientWithVisit(QStringLiteral("pemberton,o"), 5);
    add(QStringLiteral("Infant Feeding"), { QStringLiteral("key Home Down space"), QStringLiteral("key alt+o") });
    expectRow(QStringLiteral("Infant Feeding"), QStringLiteral("Mostly Breastfeeding"));
    add(QStringLiteral("Birth Measurements"),
        { QStringLiteral("key ctrl+a"), QStringLiteral("type '7 3'"), QStringLiteral("key Return") });
    expectRow(QStringLiteral("Birth Measurements"), QStringLiteral("Birth Weight=7 lbs 3 oz"));
}

TEST_F(Keyboard, EditsAndShowsTheVisitByTheMenuAndLeavesByEscape)
{
    pickPatientWithVisit(QStringLiteral("hartley"), 1);
    const QString before = window->gridText();
    tabTo<QTableView>();
    const int row = rowOf(QStringLiteral("Functional Status"), QString());
    ASSERT_GT(row, 0);
    pressKeys({ QStringLiteral("key"), QStringLiteral("ctrl+Home") });
    for (int i = 0; i < row; ++i)
        pressKeys({ QStringLiteral("key"), QStringLiteral("Down") });
    ASSERT_TRUE(waitUntil([&] { return grid()->currentIndex().row() == row; }));

    pressKeysInDialogs({ QStringLiteral("key Menu"), QStringLiteral("key d"), QStringLiteral("key Escape") });
    ASSERT_TRUE(waitForKeys());
    expectDialogs(QStringLiteral("Visit Detail"));

    // From the viewer to the editor and back, nothing changed.
    pressKeysInDialogs({ QStringLiteral("key shift+F10"), QStringLiteral("key e"), QStringLiteral("key alt+e"),
        QStringLiteral("key End"), QStringLiteral("key Escape") });
    ASSERT_TRUE(waitForKeys());
    expectDialogs(QStringLiteral("View Functional Status Record|Update Functional Status Record"));

    pressKeysInDialogs({ QStringLiteral("key shift+F10"), QStringLiteral("key l"), QStringLiteral("key Escape") });
    ASSERT_TRUE(waitForKeys());
    expectDialogs(QStringLiteral("Remove Record?"));

    // From a lookup back to its form, and out.
    add(QStringLiteral("Treatment Contract"),
        { QStringLiteral("key space Tab Tab"), QStringLiteral("key ctrl+a"), QStringLiteral("type s"),
            QStringLiteral("key Return"), QStringLiteral("key Escape"), QStringLiteral("key Escape") });
    expectDialogs(QStringLiteral("Add Treatment Contract Record|Lookup Provider|Add Treatment Contract Record"));
    EXPECT_EQ(window->gridText(), before);
}

}
}
