// The panel in the reference host, by keys and mouse: patients, events, waiting, pickers, text size, lookups.
#include "host/windows/CallJournalWindow.h"
#include "host/windows/StatusLine.h"
#include "tests/window/HostWindowFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QScopeGuard>
#include <QStatusBar>
#include <QStyle>

namespace health::test {
namespace {

TEST_F(HostWindow, TwoPanelsFollowThePatientAndTheServer)
{
    pressKeys({ "key", "ctrl+n" });
    ASSERT_TRUE(waitUntil([&] { return grids().size() == 2; }));
    ASSERT_TRUE(window->context().selectPatient(13));
    for (const QTableView* grid : grids())
        EXPECT_EQ(grid->model()->rowCount(), 10);

    // An event of the server reloads both, and so does F5.
    QSet<const QTableView*> reloaded;
    for (const QTableView* grid : grids())
        QObject::connect(
            grid->model(), &QAbstractItemModel::modelReset, window.get(), [&reloaded, grid] { reloaded.insert(grid); });
    QProcess::execute(
        QStringLiteral(SERVER_PROGRAM), { "--data", folder.filePath("data"), "--notify", "REFUSAL.13.REF" });
    EXPECT_TRUE(waitUntil([&] { return reloaded.size() == 2; }));
    reloaded.clear();
    pressKeys({ "key", "F5" });
    EXPECT_TRUE(waitUntil([&] { return reloaded.size() == 2; }));

    pressKeys({ "key", "ctrl+w" });
    EXPECT_TRUE(waitUntil([&] { return grids().size() == 1; }));
    EXPECT_EQ(window->gridText().count(u'\n'), 10);
}

TEST_F(HostWindow, CallJournalByKeysBesideThePanel)
{
    ASSERT_TRUE(window->context().selectPatient(13));
    pressKeys({ "key", "alt+h", "c" });
    ASSERT_TRUE(waitUntil([&] { return window->findChild<CallJournalWindow*>() != nullptr; }));
    QPointer<CallJournalWindow> journal = window->findChild<CallJournalWindow*>();
    EXPECT_TRUE(window->context().mayChange()); // the user goes on working
    QAbstractItemModel& model = *journal->findChild<QTableView*>()->model();
    const auto listed = [&](const QString& call) {
        return !model.match(model.index(0, 1), Qt::DisplayRole, call).isEmpty();
    };
    EXPECT_TRUE(waitUntil([&] { return listed("MEVREF GET"); }));

    activation.stop();
    journal->activateWindow();
    ASSERT_TRUE(waitUntil([&] { return journal->isActiveWindow(); }));
    pressKeys({ "key", "alt+p" });
    CallJournal& calls = window->context().session().journal();
    EXPECT_TRUE(waitUntil([&] { return calls.isUnlocked(); }));
    pressKeys({ "key", "Escape" });
    EXPECT_TRUE(waitUntil([&] { return !journal; }));
    EXPECT_FALSE(calls.isUnlocked());
}

// Receives the same events as the panels, after them.
struct Onlooker : ComponentInstance, ICSS_PatientEvents, ICSS_EncounterEvents {
    std::function<void()> told;
    QWidget* widget() override { return nullptr; }
    ICSS_PatientEvents& patientEvents() override { return *this; }
    ICSS_EncounterEvents& encounterEvents() override { return *this; }
    void openRecord(int, const Text&, const Text&) override { }
    void reopenEntry() override { }
    std::vector<std::vector<Text>> rows() const override { return {}; }
    bool Pending() override { return false; }
    void Committed() override { told(); }
    void Canceled() override { }
};

// A component may show a box while it loads: the others must not show the previous patient then, and no other change
// may begin.
TEST_F(HostWindow, PanelsReleaseThePatientBeforeAnyLoads)
{
    ASSERT_TRUE(window->context().selectPatient(1));
    std::vector<std::string> seen; // number in the title, rows of the panel
    Onlooker onlooker;
    window->context().add(onlooker);
    onlooker.told = [&] {
        const QString title = window->windowTitle().section(u'(', 1).section(u')', 0, 0);
        seen.push_back((title + u'|' + QString::number(window->gridText().count(u'\n'))).toStdString());
        EXPECT_FALSE(window->context().selectPatient(5));
        EXPECT_FALSE(window->context().mayChange());
    };
    EXPECT_TRUE(window->context().selectPatient(13));
    EXPECT_EQ(seen, (std::vector<std::string> { "|1", "13|10", "13|10" })); // released, patient, visit
    seen.clear();
    EXPECT_THROW(window->context().selectPatient(999999), Failure);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(window->context().patient().number, 13);
    window->context().remove(onlooker);
}

TEST_F(HostWindow, FocusGoesToTheRecordsOfThePanelThatHadItLast)
{
    window->findChild<QComboBox*>()->setFocus();
    ASSERT_TRUE(window->context().selectPatient(1));
    EXPECT_EQ(window->focusWidget(), grid());
    pressKeys({ "key", "ctrl+n" });
    ASSERT_TRUE(waitUntil([&] { return grids().size() == 2; }));
    long patient = 2;
    for (QTableView* last : grids()) {
        last->setFocus();
        button(*window, "Select Patient...")->setFocus();
        ASSERT_TRUE(window->context().selectPatient(++patient));
        EXPECT_EQ(window->focusWidget(), last);
    }
}

// The server hangs: the user stops waiting, and keys that were typed meanwhile are discarded.
TEST_F(HostWindow, WaitingCanBeStopped)
{
    ASSERT_TRUE(window->context().selectPatient(1));
    selectRow(0);
    ASSERT_TRUE(signalServer(SIGSTOP));
    QProcess keys;
    keys.start("sh", { "-c", "sleep 2.5; xdotool key Down; sleep 0.5; xdotool key Escape" });
    QElapsedTimer waited;
    waited.start();
    action("Select Visit...")->trigger();
    EXPECT_LT(waited.elapsed(), 15000); // the call's own limit is a minute
    EXPECT_FALSE(action("New Panel")->isEnabled());
    EXPECT_FALSE(action("New Panel")->toolTip().isEmpty());
    QTest::qWait(300);
    EXPECT_EQ(grid()->currentIndex().row(), 0);
}

TEST_F(HostWindow, StatusLineShowsTheLossOfTheServerAndNoFormerPatientsRecord)
{
    auto& session = window->context().session();
    auto* const line = window->statusBar()->findChild<StatusLine*>()->findChild<QLabel*>();
    ASSERT_TRUE(window->context().selectPatient(1));
    session.raiseEvent(L"SAVED", L"Asthma Status 11/21/2026 08:15");
    EXPECT_TRUE(line->text().contains("Asthma Status 11/21/2026"));
    ASSERT_TRUE(window->context().selectPatient(5));
    EXPECT_EQ(line->text(), "");
    Q_EMIT session.connectionChanged(false);
    EXPECT_TRUE(line->text().startsWith("Not connected since "));
    session.raiseEvent(L"STATUS", L"1 record copied.");
    EXPECT_EQ(line->text(), "1 record copied.");
    Q_EMIT session.connectionChanged(false); // a failed try to reconnect
    EXPECT_TRUE(line->text().startsWith("Not connected since "));
    Q_EMIT session.connectionChanged(true);
    EXPECT_EQ(line->text(), "");
}

TEST_F(HostWindow, WindowCanBeClosedWhileACallWaits)
{
    ASSERT_TRUE(window->context().selectPatient(1));
    auto& session = window->context().session();
    session.onWait = [&, offered = session.onWait](qint64 milliseconds) {
        if (milliseconds > 200)
            window->close();
        return offered(milliseconds);
    };
    ASSERT_TRUE(signalServer(SIGSTOP));
    QElapsedTimer waited;
    waited.start();
    EXPECT_THROW(session.callList(L"MEVHOST VISITS", L"1"), CallAbandoned);
    EXPECT_TRUE(window->isVisible()); // until the caller has returned
    EXPECT_TRUE(waitUntil([&] { return !window->isVisible(); }));
    EXPECT_LT(waited.elapsed(), 15000);
}

TEST_F(HostWindow, PickersHaveSteadyColumnsAndReachBothEnds)
{
    QList<QList<int>> widths;
    QList<int> rows;
    int last = 0;
    const auto look = [&] {
        const auto* const list = QApplication::activeModalWidget()->findChild<QTableWidget*>();
        widths.append(QList<int>());
        for (int column = 0; column + 1 < list->columnCount(); ++column)
            widths.last().append(list->columnWidth(column));
        rows.append(list->currentRow());
        last = list->rowCount() - 1;
    };
    std::deque<std::function<void()>> wanted;
    for (const char* const key : { "q", "BackSpace", "End", "Home" }) {
        wanted.push_back([key] {
            pressKeys({ "key", QString::fromLatin1(key) });
            QTest::qSleep(400); // the search waits for a pause in typing
        });
        wanted.push_back(look);
    }
    wanted.push_back([] { pressKeys({ "key", "Escape" }); });
    doInTurn(wanted);
    action("Select Patient...")->trigger();
    ASSERT_EQ(widths.size(), 4);
    EXPECT_EQ(widths[0], widths[1]);
    EXPECT_EQ(rows, (QList { 0, 0, last, 0 }));
    EXPECT_GT(last, 100);
}

TEST_F(HostWindow, TextSizeIsRememberedAndGoesBackToTheNaturalOne)
{
    QCoreApplication::setOrganizationName("personal-health");
    const auto forget = qScopeGuard([] { QCoreApplication::setOrganizationName(QString()); });
    const auto points = [] { return QApplication::font().pointSizeF(); };
    const auto bar = [this] { return window->style()->pixelMetric(QStyle::PM_ScrollBarExtent); };
    const double natural = points();
    const int naturalBar = bar();
    for (int i = 0; i < 6; ++i)
        action("Larger Text")->trigger();
    const double large = points();
    EXPECT_GT(large, natural * 1.7);
    EXPECT_GT(bar(), naturalBar * 3 / 2);
    window->close();
    window.reset();
    EXPECT_EQ(points(), natural);
    window = std::make_unique<MainWindow>(WindowOptions());
    EXPECT_EQ(points(), large);
    action("Normal Text")->trigger();
    EXPECT_EQ(points(), natural);
    EXPECT_EQ(bar(), naturalBar);
}

TEST_F(HostWindow, LookupFieldIsLeftByClickAndByCancel)
{
    ASSERT_TRUE(window->context().selectPatient(6));
    selectRow(0);
    QStringList dialogs;
    QString names;
    // Keys, "note" for the name in the field, or the caption of a button to click.
    const QString name = "key alt+m type pember";
    const QStringList steps { "key alt+m BackSpace Tab", name,
        "OK", // leaving the field finds two patients and opens the lookup
        "Cancel", // in the lookup: clears the name
        "note", name, "...", "Cancel", // in the lookup: keeps the name
        "note", "OK", // clears the name and does not save
        "note", name, "Cancel" }; // in the form: opens no lookup
    std::deque<std::function<void()>> wanted { [] { pressKeys({ "key", "Return" }); } };
    for (const QString& step : steps) {
        wanted.push_back([&, step] {
            QWidget* const dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr) << step.toStdString();
            dialogs.append(dialog->windowTitle());
            if (step.startsWith("key"))
                return pressKeys(step.split(u' '));
            if (step != "note") {
                const QPushButton& pressed = *button(*dialog, step);
                const QPoint place = pressed.mapToGlobal(pressed.rect().center());
                return pressKeys({ "mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1" });
            }
            for (const QLineEdit* field : dialog->findChildren<QLineEdit*>()) {
                if (field->accessibleName() == "Mother or Guardian")
                    names += u'<' + field->text() + u'>';
            }
        });
    }
    doInTurn(wanted);
    EXPECT_TRUE(waitForKeys() || waitForKeys());
    EXPECT_EQ(dialogs.count("Lookup Patient"), 2) << dialogs.join(u'|').toStdString();
    EXPECT_EQ(names, "<><pember><>");
}

}
}
