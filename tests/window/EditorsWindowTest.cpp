// The remaining editors by keys alone, from the panel's list to the server and back.
#include "tests/window/HostWindowFixture.h"

namespace health::test {
namespace {

class EditorsWindow : public HostWindow {
protected:
    using HostWindow::HostWindow;

    QString reply(TextView call, TextView parameter)
    {
        return QString::fromStdWString(window->context().session().callText(call, parameter));
    }
};

TEST_F(EditorsWindow, FunctionalStatusIsViewedAndEdited)
{
    ASSERT_TRUE(window->context().selectPatient(10));
    selectRow(0);
    pressKeysInDialogs({ QStringLiteral("key Return"), QStringLiteral("key alt+e"),
        QStringLiteral("key t Tab Tab Delete"), // the first list's choice; the third's is taken back
        QStringLiteral("key alt+o") });
    ASSERT_TRUE(waitForKeys());
    EXPECT_TRUE(waitUntil([&] { return summary(0).contains(QStringLiteral("Toileting=Totally Dependent")); }))
        << summary(0).toStdString();
    EXPECT_FALSE(summary(0).contains(QStringLiteral("Dressing")));
    EXPECT_EQ(grid()->currentIndex().row(), 0);
}

TEST_F(EditorsWindow, EmergencyVisitIsOpenedByTheHost)
{
    ASSERT_TRUE(window->context().selectPatient(16));
    const Text visit = std::to_wstring(selectLatestVisit());
    const auto records = [&] { return linesOf(window->context().session().callList(L"MEVVER GET", L"16")); };
    const auto before = records().size();
    // Urgent; other means: the text field takes the focus; transferred to a facility.
    pressKeysInDialogs({ QStringLiteral("key space Down"),
        QStringLiteral("key alt+m space Down Down Down Down Down Down"), QStringLiteral("key Tab"),
        QStringLiteral("type canoe"), QStringLiteral("key alt+d space Down Down"), QStringLiteral("key alt+f space"),
        QStringLiteral("key Tab"), QStringLiteral("type willow"), QStringLiteral("key Tab"),
        QStringLiteral("key alt+c"), QStringLiteral("type Stable"), QStringLiteral("key alt+o") });
    window->firstPanel()->openRecord(8, L"", visit);
    ASSERT_TRUE(waitForKeys());
    const auto after = records();
    ASSERT_EQ(after.size(), before + 1);
    const QStringList added = after[0][0].toInt() > after[1][0].toInt() ? after[0] : after[1];
    EXPECT_EQ(added[3] + u'/' + added[4] + u'/' + added[5] + u'/' + added[9] + u'/' + added[13] + u'/' + added[14],
        QStringLiteral("URGENT|U/OTHER|O/canoe/TRANSFERRED|T/Stable/WILLOW CREEK HEALTH CENTER|1;AUTTLOC("));
}

class RegistryWindow : public EditorsWindow {
protected:
    RegistryWindow()
        : EditorsWindow(QStringLiteral("rollins,cole"))
    {
    }
};

TEST_F(RegistryWindow, PatientIsInactivatedAndActivatedAgain)
{
    ASSERT_TRUE(window->context().selectPatient(11));
    selectRow(0);
    QStringList statuses; // that the server has in turn
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, window.get(), [&] {
        if (window->context().session().isInCall())
            return;
        const QString status = reply(L"MEVVAST GETREG", L"11").section(u'^', 1, 1);
        if (statuses.isEmpty() || statuses.last() != status)
            statuses.append(status);
    });
    watch.start(100);
    // Activating opens the registry's editor; its first date is the last visit.
    pressKeysInDialogs({ QStringLiteral("key Return"), QStringLiteral("key alt+i"), QStringLiteral("key alt+y"),
        QStringLiteral("key alt+a"), QStringLiteral("key alt+y"), QStringLiteral("key alt+v"),
        QStringLiteral("key ctrl+a"), QStringLiteral("type T"), QStringLiteral("key alt+o"),
        QStringLiteral("key Escape") });
    ASSERT_TRUE(waitForKeys());
    EXPECT_EQ(statuses.join(u' ').toStdString(), "ACTIVE|A INACTIVE|I ACTIVE|A");
    EXPECT_TRUE(
        reply(L"MEVVAST GETREG", L"11")
            .startsWith(QStringLiteral("11^ACTIVE|A^") + QDate::currentDate().toString(QStringLiteral("MM/dd/yyyy"))))
        << reply(L"MEVVAST GETREG", L"11").toStdString();
}

}
}
