#include "host/session/CallJournal.h"
#include "host/session/HostSession.h"
#include "host/session/JournalText.h"
#include "host/windows/CallJournalWindow.h"
#include "tests/support/EventNames.h"
#include "tests/support/ScriptedTransport.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace health::test {
namespace {

using namespace Qt::StringLiterals;

class CallJournalTest : public testing::Test {
protected:
    CallJournalTest()
    {
        transport.answer = [this](const Request& request) {
            if (request.name == u"MEVHOST SIGNON")
                return ScriptedTransport::reply(request, "71^SORREL,ADA^5^WILLOW CREEK");
            return onCall ? onCall(request) : ScriptedTransport::reply(request, "1");
        };
        session.signOn(L"SORREL,ADA");
        journal.clear();
    }

    // A line for each entry: "MEVREP GET: Answered".
    QStringList lines() const
    {
        QStringList lines;
        for (const JournalEntry& entry : journal.entries()) {
            const QString result = journalText(entry, JournalColumn::Result);
            lines.append(result.isEmpty() ? entry.name : entry.name + u": "_s + result);
        }
        return lines;
    }
    // Makes a call, whatever becomes of it.
    void call(TextView name, TextView parameter = L"12")
    {
        try {
            session.callText(name, parameter);
        } catch (const Failure&) {
        }
        QTest::qWait(1); // a declined retry ends with the turn of the event loop
    }

    ScriptedTransport transport;
    std::function<QByteArray(const Request&)> onCall;
    bool retries = false;
    HostSession session { transport, 300, [this](const QString&) { return std::exchange(retries, false); } };
    CallJournal& journal = session.journal();
};

TEST_F(CallJournalTest, SaysWhatBecameOfEachCall)
{
    onCall = [](const Request& request) {
        if (request.name == u"FAILS")
            return framed("F" + QByteArray::number(request.number) + "\nNo such call.");
        const bool refuses = request.name == u"REFUSES";
        return ScriptedTransport::reply(request, refuses ? "-1^This record is locked." : "-not a refusal");
    };
    for (const TextView name : { L"ANSWERS", L"REFUSES", L"FAILS" })
        call(name);
    EXPECT_EQ(lines(),
        (QStringList { "ANSWERS: Answered", "REFUSES: Refused by the server", "FAILS: Failed at the server" }));
    EXPECT_EQ(journal.entries()[0].sent, framed("1\nANSWERS\n12").size());
    EXPECT_EQ(journal.entries()[0].received, 14);

    journal.clear();
    onCall = [&](const Request& request) {
        if (request.connection > 1)
            return ScriptedTransport::reply(request, "1");
        transport.endsAfterAnswer = true;
        return QByteArray();
    };
    retries = true;
    call(L"MEVREP SET");
    EXPECT_EQ(lines(),
        (QStringList { "MEVREP SET: Connection lost", "Connection lost", "Connection opened",
            "MEVHOST SIGNON: Answered", "MEVREP SET: Answered, repeated" }));

    journal.clear();
    onCall = [](const Request&) { return QByteArray("GARBAGE!"); };
    call(L"MEVREP GET");
    EXPECT_EQ(lines(), (QStringList { "MEVREP GET: Given up", "Connection lost" }));
    journal.clear();
    transport.refuseConnections = 1;
    call(L"MEVREP GET");
    EXPECT_EQ(lines(), QStringList { "Connection not opened" });
}

TEST_F(CallJournalTest, CallsSentAheadAndEventsWithoutThePatientsNumber)
{
    const EventNames sink { session, { L"VXR.12" } };
    journal.clear();
    session.expectCalls(std::array { ExpectedCall { ExpectedCall::Form::Lines, L"A", L"12" } });
    call(L"A");
    call(L"B");
    for (int i = 0; i < 3; ++i)
        transport.stream().push(framed("EVXR.12.VELD\nOWN"));
    transport.stream().push(framed("EVXR.12.VELD.HARTLEY,MARIGOLD\n"));
    QTest::qWait(10);
    EXPECT_EQ(lines(),
        (QStringList {
            "A: Answered, sent ahead", "B: Answered", "VXR.*.VELD: Event, 3 times", "VXR.*.VELD.*: Event" }));
}

TEST_F(CallJournalTest, KeepsTheLatestAndAddsThemUp)
{
    EXPECT_EQ(journalSums(journal.sums()), u"No calls");
    for (std::size_t i = 0; i < CallJournal::Most + 5; ++i)
        session.callText(L"MEVREP GET", L"12");
    EXPECT_EQ(journal.entries().size(), CallJournal::Most);
    onCall = [](const Request& request) {
        QThread::msleep(20);
        return ScriptedTransport::reply(request, "-1^No.");
    };
    call(L"LATE");
    const CallJournal::Sums sums = journal.sums();
    EXPECT_EQ(sums.calls, CallJournal::Most);
    EXPECT_EQ(sums.failed, 1u);
    EXPECT_EQ(sums.slow, 0u);
    EXPECT_LT(*sums.median, 20'000);
    EXPECT_GE(*sums.slowest, 20'000);

    JournalEntry entry = journal.entries().back();
    entry.microseconds = 1'240'500;
    EXPECT_EQ(journalText(entry, JournalColumn::Duration), u"slow 1,240.5 ms");
    entry.microseconds = 999'900;
    EXPECT_EQ(journalText(entry, JournalColumn::Duration), u"999.9 ms");
}

// No parameter, reply, refusal or event's number reaches a place that the user has not unlocked.
class JournalPrivacy : public CallJournalTest {
protected:
    static inline const QStringList Secrets { "HARTLEY", "MARIGOLD", "4711", "PREGNANT", "SORREL" };

    JournalPrivacy()
    {
        onCall = [](const Request& request) {
            return ScriptedTransport::reply(request, "-1^HARTLEY,MARIGOLD is PREGNANT^4711");
        };
        window.show();
    }
    void makeCalls()
    {
        call(L"MEVREP SET", L"4711^HARTLEY,MARIGOLD");
        transport.stream().push(framed("EVXR.4711.HARTLEY,MARIGOLD\nPREGNANT"));
        session.signOn(L"SORREL,ADA");
        QTest::qWait(300); // the window follows the journal
    }
    QString file()
    {
        const QString path = folder.filePath("journal.csv");
        window.save(path);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
            QFile::Permissions());
        return QString::fromUtf8(file.readAll());
    }
    QString copied()
    {
        for (QPushButton* const button : window.findChildren<QPushButton*>()) {
            if (button->text() == u"C&opy")
                button->click();
        }
        return QApplication::clipboard()->text();
    }
    // Everything that the window shows or tells a screen reader.
    QString shown()
    {
        QString text;
        const QAbstractItemModel& model = *window.findChild<QTableView*>()->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < model.columnCount(); ++column) {
                for (const int role : { int(Qt::DisplayRole), int(Qt::ToolTipRole), int(Qt::AccessibleTextRole) })
                    text += model.index(row, column).data(role).toString() + u'\n';
            }
        }
        for (const QLabel* const label : window.findChildren<QLabel*>())
            text += label->isVisible() ? label->text() : QString();
        return text + window.findChild<QPlainTextEdit*>()->toPlainText();
    }
    static QStringList found(const QString& text)
    {
        QStringList found;
        std::copy_if(Secrets.begin(), Secrets.end(), std::back_inserter(found),
            [&](const QString& secret) { return text.contains(secret, Qt::CaseInsensitive); });
        return found;
    }
    QCheckBox& lock() { return *window.findChild<QCheckBox*>(); }
    bool keepsContent() const
    {
        return std::any_of(journal.entries().begin(), journal.entries().end(),
            [this](const JournalEntry& entry) { return journal.content(entry.id) != nullptr; });
    }

    QTemporaryDir folder;
    CallJournalWindow window { journal, nullptr };
    const QString Warning = "Parameters and replies are shown: they contain patients' data.";
};

TEST_F(JournalPrivacy, NothingWhileLocked)
{
    makeCalls();
    EXPECT_TRUE(file().contains("MEVREP SET")); // there is something to find
    EXPECT_TRUE(file().contains("VXR.*.*"));
    EXPECT_EQ(found(file()), QStringList());
    EXPECT_EQ(found(shown()), QStringList());
    EXPECT_EQ(found(copied()), QStringList());
    EXPECT_FALSE(keepsContent());
    EXPECT_FALSE(shown().contains(Warning));
}

TEST_F(JournalPrivacy, UnlockedShowsNewCallsInTheWindowOnly)
{
    call(L"BEFORE", L"4711");
    lock().click();
    EXPECT_TRUE(shown().contains(Warning));
    EXPECT_FALSE(keepsContent()); // from now on only
    call(L"MEVREP SET", L"4711^HARTLEY,MARIGOLD");
    QTest::qWait(300);
    auto& table = *window.findChild<QTableView*>();
    table.setCurrentIndex(table.model()->index(1, 0));
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(),
        "4711^HARTLEY,MARIGOLD\n\n-1^HARTLEY,MARIGOLD is PREGNANT^4711");
    EXPECT_EQ(found(file()), QStringList());
    EXPECT_EQ(found(copied()), QStringList());

    lock().click();
    EXPECT_FALSE(keepsContent());
    EXPECT_EQ(found(shown()), QStringList());
    EXPECT_FALSE(shown().contains(Warning));
}

TEST_F(JournalPrivacy, LocksWhenAnotherUserSignsOnOrTheWindowIsClosed)
{
    lock().click();
    call(L"MEVREP SET", L"4711");
    EXPECT_TRUE(keepsContent());
    session.signOn(L"HALTON,PIERS");
    EXPECT_FALSE(keepsContent());
    EXPECT_FALSE(lock().isChecked());
    EXPECT_FALSE(shown().contains(Warning));
    {
        CallJournalWindow other(journal, nullptr);
        other.findChild<QCheckBox*>()->click();
        call(L"MEVREP SET", L"4711");
        EXPECT_TRUE(keepsContent());
    }
    EXPECT_FALSE(keepsContent());
}

TEST_F(JournalPrivacy, WindowFollowsTheRing)
{
    auto& table = *window.findChild<QTableView*>();
    const auto names = [&] {
        QStringList texts;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            texts.append(table.model()->index(row, JournalColumn::Name).data().toString());
        return texts;
    };
    for (const TextView name : { L"A", L"B" })
        call(name);
    QTest::qWait(300);
    EXPECT_EQ(names(), (QStringList { "A", "B" }));
    for (std::size_t i = 0; i < CallJournal::Most - 1; ++i)
        session.callText(L"C", L"");
    QTest::qWait(300);
    EXPECT_EQ(names().mid(0, 2), (QStringList { "B", "C" }));
    EXPECT_EQ(names().size(), static_cast<qsizetype>(CallJournal::Most));
    journal.clear();
    call(L"D");
    QTest::qWait(300);
    EXPECT_EQ(names(), QStringList { "D" });
}

}
}
