// Saves in the real window on a real server: what an impatient or a hasty user does.
#include "tests/window/HostWindowFixture.h"

#include <QStatusBar>

namespace health::test {

namespace {

constexpr int RefusalType = 7;

class Saving : public HostWindow {
protected:
    int refusals() { return static_cast<int>(window->gridText().count("Refusal\t")); }

    QString statusLine()
    {
        QStringList texts;
        for (const QLabel* const label : window->statusBar()->findChildren<QLabel*>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        return texts.join(u'|');
    }
};

TEST_F(Saving, ImpatientPressesSaveOnceAndTheWindowSaysSo)
{
    ASSERT_TRUE(window->context().selectPatient(1));
    const int before = refusals();
    doInTurn({ [] {
                  pressKeys({ "key", "Down", "space" });
              }, // EKG has a single item
        [] {
            ASSERT_TRUE(signalServer(SIGSTOP));
            QProcess::startDetached("sh", { "-c", QStringLiteral("sleep 2; kill -CONT %1").arg(serverProcess()) });
            QStringList keys { "key", "--delay", "30" };
            for (int press = 0; press < 10; ++press)
                keys += { "alt+a", "Return" };
            QProcess::startDetached("xdotool", keys);
        } });
    window->firstPanel()->openRecord(RefusalType, L"", L"");
    EXPECT_TRUE(waitUntil([&] { return refusals() == before + 1; }));
    QTest::qWait(1000); // further saves would arrive
    EXPECT_EQ(refusals(), before + 1);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(statusLine().startsWith("Saved ")) << statusLine().toStdString();
    EXPECT_TRUE(statusLine().contains("Refusal")) << statusLine().toStdString();
}

TEST_F(Saving, DiscardedEntryComesBackUntilThePatientChanges)
{
    ASSERT_TRUE(window->context().selectPatient(1));
    QAction* const undo = action("Undo Discarded Entry");
    EXPECT_FALSE(undo->isEnabled());
    const auto typeAndCancel = [&] {
        doInTurn({ [] {
                      pressKeys({ "key", "alt+n", "type", "not today" });
                  },
            [] {
                pressKeys({ "key", "Escape" });
            } });
    };
    typeAndCancel();
    window->firstPanel()->openRecord(RefusalType, L"", L"");
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_TRUE(statusLine().contains("Entry discarded: Enter Refusal")) << statusLine().toStdString();
    QString comment;
    doInTurn({ [&] {
        comment = QApplication::activeModalWidget()->findChild<QPlainTextEdit*>()->toPlainText();
        pressKeys({ "key", "Escape" });
    } });
    undo->trigger();
    EXPECT_EQ(comment, "not today");
    EXPECT_TRUE(undo->isEnabled()); // cancelled again
    Q_EMIT window->context().session().recordSaved("Asthma Status"); // a save is confirmed beside the offer
    EXPECT_TRUE(statusLine().contains("Asthma Status")) << statusLine().toStdString();
    EXPECT_TRUE(statusLine().contains("Entry discarded: Enter Refusal")) << statusLine().toStdString();
    ASSERT_TRUE(window->context().selectPatient(5));
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(statusLine().contains("discarded")) << statusLine().toStdString();
}

}

}
