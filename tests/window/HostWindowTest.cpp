// The whole program on a real screen: the host's window, the panel from its library, the real server, real key events.
#include "host/ComponentLoader.h"
#include "host/ListPicker.h"
#include "host/MainWindow.h"

#include <QApplication>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace health::test {
namespace {

// Keys as a keyboard sends them, by way of the X server.
void pressKeys(const QStringList& arguments) { ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), arguments), 0); }

bool waitUntil(const std::function<bool()>& holds)
{
    for (int i = 0; i < 500 && !holds(); ++i)
        QTest::qWait(10);
    return holds();
}

class HostWindow : public testing::Test {
protected:
    void SetUp() override
    {
        registerComponent(QStringLiteral(PANEL_LIBRARY));
        Options options;
        options.user = QStringLiteral("sorrel,ada");
        options.dataFolder = folder.filePath(QStringLiteral("data"));
        options.serverProgram = QStringLiteral(SERVER_PROGRAM);
        options.timeoutMilliseconds = 60000;
        window = std::make_unique<MainWindow>(options);
        ASSERT_TRUE(window->start());
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        ASSERT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
    }

    // Opens the patient picker by its key, types, and picks by Enter. The picker is modal: its keys are sent
    // from a timer.
    void pickPatient(const QString& text)
    {
        QTimer::singleShot(400, [text] {
            ASSERT_NE(qobject_cast<ListPicker*>(QApplication::activeModalWidget()), nullptr);
            pressKeys({ QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text });
            QTimer::singleShot(400, [] { pressKeys({ QStringLiteral("key"), QStringLiteral("Return") }); });
        });
        pressKeys({ QStringLiteral("key"), QStringLiteral("ctrl+o") });
    }

    QTemporaryDir folder;
    std::unique_ptr<MainWindow> window;
};

TEST_F(HostWindow, PatientIsPickedByKeysAndTheGridListsTheRecords)
{
    EXPECT_EQ(window->gridText(), QStringLiteral("Patient Not Selected\n"));
    pickPatient(QStringLiteral("hartley"));
    ASSERT_TRUE(waitUntil([&] { return window->context().patient().number == 1; }));
    ASSERT_TRUE(waitUntil([&] { return window->gridText().count(u'\n') == 6; })) << window->gridText().toStdString();
    EXPECT_TRUE(window->gridText().startsWith(QStringLiteral("Reproductive\tG3P1LC1SA1TA0; LMP=")));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Hartley, Marigold Rose (1) - Personal Health"));

    // By keys alone: into the list, down, the context menu, and Escape.
    auto* const grid = window->findChild<QTableView*>();
    window->activateWindow(); // what a window manager does after a dialog; there is none here
    ASSERT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
    grid->setFocus();
    pressKeys({ QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Down") });
    ASSERT_TRUE(waitUntil([&] { return grid->currentIndex().row() > 0; }));
    bool menuSeen = false;
    QTimer::singleShot(300, [&] {
        menuSeen = QApplication::activePopupWidget() != nullptr;
        pressKeys({ QStringLiteral("key"), QStringLiteral("Escape") });
    });
    pressKeys({ QStringLiteral("key"), QStringLiteral("shift+F10") });
    EXPECT_TRUE(waitUntil([&] { return menuSeen && !QApplication::activePopupWidget(); }));
}

TEST_F(HostWindow, TwoPanelsFollowThePatientAndTheServer)
{
    pressKeys({ QStringLiteral("key"), QStringLiteral("ctrl+n") });
    ASSERT_TRUE(waitUntil([&] { return window->findChildren<QTableView*>().size() == 2; }));
    ASSERT_TRUE(window->context().selectPatient(13));
    for (const QTableView* grid : window->findChildren<QTableView*>())
        EXPECT_EQ(grid->model()->rowCount(), 10);

    // An event of the server reloads both.
    int resets = 0;
    for (const QTableView* grid : window->findChildren<QTableView*>())
        QObject::connect(grid->model(), &QAbstractItemModel::modelReset, window.get(), [&] { ++resets; });
    QProcess::execute(QStringLiteral(SERVER_PROGRAM),
        { QStringLiteral("--data"), folder.filePath(QStringLiteral("data")), QStringLiteral("--notify"),
            QStringLiteral("REFUSAL.13.REF") });
    EXPECT_TRUE(waitUntil([&] { return resets >= 2; }));

    pressKeys({ QStringLiteral("key"), QStringLiteral("ctrl+w") });
    EXPECT_TRUE(waitUntil([&] { return window->findChildren<QTableView*>().size() == 1; }));
    EXPECT_EQ(window->gridText().count(u'\n'), 10);
}

TEST_F(HostWindow, VisitOfTheDayIsHighlighted)
{
    ASSERT_TRUE(window->context().selectPatient(1));
    const auto* const model = window->findChild<QTableView*>()->model();
    const auto bold = [&] {
        int rows = 0;
        for (int row = 0; row < model->rowCount(); ++row)
            rows += model->index(row, 1).data(Qt::FontRole).isValid();
        return rows;
    };
    EXPECT_EQ(bold(), 0);
    QTimer::singleShot(400, [] {
        pressKeys({ QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Return") });
    });
    pressKeys({ QStringLiteral("key"), QStringLiteral("ctrl+t") });
    ASSERT_TRUE(waitUntil([&] { return window->context().visit().number != 0; }));
    EXPECT_EQ(bold(), 3); // functional status, asthma and contract of that visit
}

}
}
