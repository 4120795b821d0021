// The whole program on a real screen: the host's window, the panel from its library, the real server, real key events.
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

#include <csignal>

namespace health::test {
// Keys as a keyboard sends them, by way of the X server.
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
        // What a window manager does after a dialog; there is none here.
        QObject::connect(&activation, &QTimer::timeout, window.get(), [this] {
            QWidget* const modal = QApplication::activeModalWidget();
            QWidget* const top = modal ? modal : window.get();
            if (!QApplication::activePopupWidget() && !top->isActiveWindow())
                top->activateWindow();
        });
        activation.start(50);
    }

    // Opens the patient picker by its key, types, and picks by Enter. The picker is modal: its keys are sent
    // from a timer.
    void pickPatient(const QString& text)
    {
        QTimer::singleShot(400, [text] {
            ASSERT_NE(qobject_cast<ListPicker*>(QApplication::activeModalWidget()), nullptr);
            pressKeys({ "type", "--delay", "20", text });
            QTimer::singleShot(400, [] { pressKeys({ "key", "Return" }); });
        });
        pressKeys({ "key", "ctrl+o" });
    }

    // Sends a signal to the session's server, a child of this program; false without a server.
    static bool signalServer(int signal)
    {
        const QString self = QString::number(QCoreApplication::applicationPid());
        const auto read = [](const QString& path) {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
        };
        for (const QByteArray& child : read(QStringLiteral("/proc/%1/task/%1/children").arg(self)).split(' ')) {
            if (read(QStringLiteral("/proc/%1/comm").arg(QString::fromLatin1(child))) == "mumps")
                return ::kill(child.toInt(), signal) == 0;
        }
        return false;
    }

    QAction* action(const QString& caption)
    {
        for (QAction* action : window->findChildren<QAction*>()) {
            if (action->text().remove(u'&') == caption)
                return action;
        }
        return nullptr;
    }

    QTableView* grid() { return window->findChild<QTableView*>(); }

    QString summary(int row) { return grid()->model()->index(row, 1).data().toString(); }

    // Selects a row with the focus in the grid, as a user does before a command.
    void selectRow(int row)
    {
        window->activateWindow();
        ASSERT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
        grid()->setFocus();
        grid()->setCurrentIndex(grid()->model()->index(row, 0));
        QTest::qWait(50);
    }

    // Presses keys one group after the other while the program's dialogs run; each group has half a second to
    // take effect.
    void pressKeysInDialogs(const QStringList& groups)
    {
        QString script = "true";
        for (const QString& group : groups)
            script += QStringLiteral("; sleep 0.5; xdotool ") + group;
        keys.start("sh", { "-c", script });
    }

    bool waitForKeys()
    {
        return waitUntil([&] { return keys.state() == QProcess::NotRunning && !QApplication::activeModalWidget(); });
    }

    QTemporaryDir folder;
    std::unique_ptr<MainWindow> window;
    QProcess keys;
    QTimer activation;
};

}
