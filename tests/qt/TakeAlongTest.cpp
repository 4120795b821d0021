#include "qt/TakeAlong.h"

#include "api/PanelActions.h"
#include "qt/ShownRecords.h"
#include "tests/support/PanelFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace health::test {
namespace {

// The panel's list is copied and exported by its published actions.
class TakeAlongTest : public PanelFixture {
protected:
    void open()
    {
        host.session->reply(L"MEVVAST GET", L"3^^3260310|81^MILD PERSISTENT|2^90^80^450^YES^NO^YES^NO\r\n");
        host.session->reply(L"MEVREF GET", L"8^^^EXAM^3^EYE EXAM^^^3260309^^^\r\n");
        showPanel(12);
    }

    QAction* action(const QString& caption) const
    {
        QAction* latest = nullptr;
        for (QAction* const action : view->actions())
            latest = action->text().remove(u'&') == caption ? action : latest;
        return latest;
    }

    // Answers each dialog that opens until the action ends: confirms it, and names a place in a file dialog.
    void run(const QString& caption, const QString& place)
    {
        QTimer driver;
        QObject::connect(&driver, &QTimer::timeout, view.get(), [this, place] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            seen.append(dialog->windowTitle());
            if (auto* const box = qobject_cast<QMessageBox*>(dialog)) {
                texts.append(box->text());
                box->reject();
            } else if (auto* const files = qobject_cast<QFileDialog*>(dialog)) {
                for (auto* const name : files->findChildren<QLineEdit*>())
                    name->setText(place);
                dialog->accept();
            } else {
                texts.append(dialog->accessibleDescription());
                dialog->accept();
            }
        });
        driver.start(20);
        action(caption)->trigger();
    }

    QStringList seen; // titles of dialogs
    QStringList texts;
};

TEST_F(TakeAlongTest, CopiesWhatIsSelectedAndWhatIsShown)
{
    open();
    EXPECT_FALSE(action("Copy with Kind and Date")->isEnabled());
    control.fgData.choose(1);
    ASSERT_TRUE(action("Copy with Kind and Date")->isEnabled());
    action("Copy with Kind and Date")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "Refusal\t2026-03-09\tType=EXAM\tItem=EYE EXAM");
    EXPECT_EQ(host.lines(L"status ").back(), L"status 1 record copied.");
    action("Copy All Shown")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text().count('\n'), 1);
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Asthma Status\t2026-03-10\tSeverity=MILD PERSISTENT\t"));
    EXPECT_EQ(action("Copy All Shown")->property(MenuProperty).toString(), "Edit");
    host.patient->patientNumber = 0;
    control.patientEvents().Committed();
    for (const char* const caption :
        { "Copy with Kind and Date", "Copy All Shown", "Export as FHIR...", "Export as CSV..." })
        EXPECT_FALSE(action(caption)->isEnabled()) << caption;
    EXPECT_TRUE(view->takeAlong().files(ExportFormat::Fhir).empty());
}

TEST_F(TakeAlongTest, ExportsToTheChosenFile)
{
    open();
    const QTemporaryDir folder;
    const QString path = folder.filePath("list.json");
    const Transcript before = host.calls();
    run("Export as FHIR...", path);
    EXPECT_EQ(seen, QStringList({ "Export as FHIR", "Export as FHIR" }));
    EXPECT_EQ(texts, QStringList("2 records. One file."));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QJsonDocument::fromJson(file.readAll()).object().value("type").toString(), "collection");
    EXPECT_EQ(host.lines(L"status ").back(), L"status 2 records exported to " + path.toStdWString() + L".");
    EXPECT_EQ(host.calls(), before); // an export asks the server nothing
    EXPECT_EQ(action("Export as FHIR...")->property(MenuProperty).toString(), "File");
}

TEST_F(TakeAlongTest, ExportsTablesAndReplacesNoFileUnasked)
{
    open();
    const QTemporaryDir folder;
    run("Export as CSV...", folder.path());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files),
        QStringList({ "patient-12-asthma-status.csv", "patient-12-refusal.csv" }));
    QFile file(folder.filePath("patient-12-refusal.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("mine");
    file.close();
    texts.clear();
    run("Export as CSV...", folder.path());
    ASSERT_EQ(texts.size(), 2);
    EXPECT_TRUE(texts[1].contains("patient-12-refusal.csv"));
    EXPECT_EQ(QFileInfo(file).size(), 4);
}

TEST_F(TakeAlongTest, TakesAlongOnlyWhatTheFilterShows)
{
    open();
    RecordFilter filter;
    filter.kinds = { RecordTypeNumber::Refusal };
    ShownRecords filtered(control);
    const TakeAlong ofFiltered(*view, filtered); // its actions are the panel's latest
    filtered.setFilter(filter);
    action("Copy All Shown")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "Refusal\t2026-03-09\tType=EXAM\tItem=EYE EXAM");
    const QTemporaryDir folder;
    run("Export as CSV...", folder.path());
    EXPECT_EQ(texts.value(0), "1 of 2 records, filtered by Refusal. One file for each kind of record.");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("patient-12-refusal.csv"));
}

TEST_F(TakeAlongTest, SaysThatKindsAreMissing)
{
    open();
    host.session->reply(L"MEVVAST GET", L"-1^");
    host.session->push(L"REFRESH");
    EXPECT_THROW(view->takeAlong().files(ExportFormat::Fhir), Failure);
    const QTemporaryDir folder;
    run("Export as FHIR...", folder.filePath("list.json"));
    EXPECT_EQ(texts.value(0), "1 record. One file. The list is incomplete. Could not be read: Asthma Status.");
}

}
}
