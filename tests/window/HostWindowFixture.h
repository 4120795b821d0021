// The whole program on a virtual screen: the host's window, the installed panel, the real server, real key events.
#pragma once

#include "host/framework/ComponentLoader.h"
#include "host/framework/DisplayText.h"
#include "host/windows/ListPicker.h"
#include "host/windows/MainWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <deque>

namespace health::test {
// Keys as a keyboard sends them, through the X server.
inline void pressKeys(const QStringList& arguments) { ASSERT_EQ(QProcess::execute("xdotool", arguments), 0); }

inline bool waitUntil(const std::function<bool()>& holds)
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
        WindowOptions options;
        options.user = "sorrel,ada";
        options.dataFolder = folder.filePath("data");
        options.serverProgram = QStringLiteral(SERVER_PROGRAM);
        options.timeoutMilliseconds = 60000;
        window = std::make_unique<MainWindow>(options);
        window->context().session().usesHints = !qEnvironmentVariableIsSet("WITHOUT_HINTS");
        ASSERT_TRUE(window->start());
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        ASSERT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
        // There is no window manager to activate a window after a dialog.
        QObject::connect(&activation, &QTimer::timeout, window.get(), [this] {
            QWidget* const modal = QApplication::activeModalWidget();
            QWidget* const top = modal ? modal : window.get();
            if (!QApplication::activePopupWidget() && !top->isActiveWindow())
                top->activateWindow();
        });
        activation.start(50);
        QObject::connect(&driver, &QTimer::timeout, window.get(), [this] { stepWhenQuiet(); });
    }

    // The process of the session's server, a child of this program; 0 without a server.
    static int serverProcess()
    {
        const QString self = QString::number(QCoreApplication::applicationPid());
        const auto read = [](const QString& path) {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
        };
        for (const QByteArray& child : read(QStringLiteral("/proc/%1/task/%1/children").arg(self)).split(' ')) {
            if (read(QStringLiteral("/proc/%1/comm").arg(QString::fromLatin1(child))) == "mumps")
                return child.toInt();
        }
        return 0;
    }
    // Sends it a signal; false if there is no server.
    static bool signalServer(int signal) { return serverProcess() != 0 && ::kill(serverProcess(), signal) == 0; }

    template<typename Widget>
    static Widget* captioned(const QObject& in, const QString& caption)
    {
        const auto all = in.findChildren<Widget*>();
        const auto found = std::find_if(
            all.begin(), all.end(), [&](const Widget* widget) { return widget->text().remove(u'&') == caption; });
        return found == all.end() ? nullptr : *found;
    }
    QAction* action(const QString& caption) { return captioned<QAction>(*window, caption); }
    static QPushButton* button(const QWidget& in, const QString& caption)
    {
        return captioned<QPushButton>(in, caption);
    }

    QTableView* grid() { return window->findChild<QTableView*>(); }
    // The lists of all panels, without the tables of their details.
    QList<QTableView*> grids()
    {
        QList<QTableView*> lists = window->findChildren<QTableView*>();
        lists.removeIf([](const QTableView* table) { return table->accessibleName() != "Personal health records"; });
        return lists;
    }

    // Selects a row with the focus in the grid, as a user does before a command.
    void selectRow(int row)
    {
        window->activateWindow();
        ASSERT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
        grid()->setFocus();
        grid()->setCurrentIndex(grid()->model()->index(row, 0));
        QTest::qWait(50);
    }

    // Does one step after the other, also inside dialogs: each when nothing has changed on the screen for a while.
    void doInTurn(std::deque<std::function<void()>> wanted)
    {
        pending = std::move(wanted);
        quietTurns = 0;
        driver.start(20);
    }

    // Arguments of xdotool, or "sleep" and seconds where the program waits for a pause.
    void pressKeysInDialogs(const QStringList& groups)
    {
        std::deque<std::function<void()>> presses;
        for (const QString& group : groups) {
            const QString command = group.startsWith("sleep") ? group : "xdotool " + group;
            presses.push_back([command] { EXPECT_EQ(QProcess::execute("sh", { "-c", command }), 0); });
        }
        doInTurn(std::move(presses));
    }

    bool waitForKeys()
    {
        return waitUntil([&] { return !driver.isActive() && !QApplication::activeModalWidget(); });
    }

    void stepWhenQuiet()
    {
        const QWidget* const modal = QApplication::activeModalWidget();
        const QWidget* const popup = QApplication::activePopupWidget();
        const auto* const line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        const QString screen = QStringLiteral("%1 %2 %3 ")
                                   .arg(quintptr(modal))
                                   .arg(quintptr(popup))
                                   .arg(quintptr(QApplication::focusWidget()))
            + (line ? line->text() : window->gridText());
        const bool isActive = popup || (modal ? modal : window.get())->isActiveWindow();
        const bool isQuiet = isActive && !window->context().session().isInCall() && screen == lastScreen;
        lastScreen = screen;
        quietTurns = isQuiet ? quietTurns + 1 : 0;
        if (quietTurns < 8)
            return;
        quietTurns = 0;
        if (pending.empty())
            return driver.stop();
        const auto step = std::move(pending.front());
        pending.pop_front();
        step();
    }

    static inline const QTemporaryDir folder; // the tests do not depend on each other's records
    std::unique_ptr<MainWindow> window;
    QTimer activation;
    QTimer driver;
    std::deque<std::function<void()>> pending;
    QString lastScreen;
    int quietTurns = 0;
};

}
