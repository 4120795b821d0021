// The real server alone: what the panel lists from it, and which faults it survives.
#include "control/GridColumns.h"
#include "control/kalmevRepHistCtrl.h"
#include "tests/support/RealPanel.h"

namespace health::test {
namespace {

TEST(Server, StoryPatientsAreListed)
{
    struct Case {
        long number;
        TextView sex;
        TextView age;
        std::map<Text, int> rows; // by label
    };
    const Case cases[] = {
        { 1, L"F", L"29",
            { { L"Reproductive", 1 }, { L"Functional Status", 1 }, { L"Asthma Status", 2 }, { L"Tx Contract", 1 },
                { L"Refusal", 1 } } },
        { 5, L"M", L"0", { { L"Birth Measurements", 1 }, { L"Infant Feeding", 2 } } },
        { 9, L"M", L"7", {} }, // seven today: no longer listed
        { 10, L"F", L"84", { { L"Functional Status", 14 } } }, { 13, L"M", L"61", { { L"Refusal", 10 } } },
        { 14, L"F", L"40", {} }, { 15, L"F", L"91", { { L"Functional Status", 5000 } } },
        { 16, L"M", L"22", {} }, // emergency visits are not listed
    };
    RealSession real;
    for (const Case& patient : cases) {
        RealPanel panel(real.session, patient.number, patient.sex, patient.age);
        kalmevRepHistCtrl control(panel.shared, panel);
        control.UserControl_Initialize();
        control.UserControl_Show();
        std::map<Text, int> rows;
        for (int row = 0; row < control.fgData.rowCount(); ++row)
            ++rows[Text(control.fgData.text(row, GridColumn::Label))];
        EXPECT_EQ(rows, patient.rows) << patient.number;
        EXPECT_TRUE(panel.objects.boxes().empty()) << patient.number;
    }
}

TEST(Server, BadFramesGetAnAnswerAndTheSessionLivesOn)
{
    RealSession warm; // creates the database
    const QByteArray token(32, 'a');
    const QByteArray signOn = framed("1\nMEVHOST SIGNON\n" + token + "^SORREL,ADA");
    const QByteArray good = framed("9\nMEVHOST PATIENT\n14");
    const std::pair<QByteArray, QByteArray> cases[] = {
        { framed(""), framed("F0\nThe request has no number.") },
        { framed("x\nMEVREP GET\n1"), framed("F0\nThe request has no number.") },
        { framed("2\n\n"), framed("F2\nThe request has no name.") },
        { framed("2\nMEVREP GET"), framed("F2\nThe request has no name.") },
        { framed("2 SAVE\nMEVREP GET\n1"), framed("F2\nThe request's purpose is not known.") },
        { framed("2\nHALT\n"), framed("F2\nThe server has no call named 'HALT'.") },
        { framed("2\nMEVREP GET\n" + QByteArray(1200000, 'x')),
            framed("R2\n-1^The request is longer than 1,000,000 bytes.") },
        { framed("2\nMEVREF SET\n^EXAM^1^2^01/02/2026^" + QByteArray(999966, '-')), // the longest request
            framed("R2\n-1^The call is longer than 10,000 bytes: nothing was done.") },
        { framed("2\nMEVREF SET\n^EXAM^1^2^01/02/2026^" + QByteArray(9979, '-')), // the longest of this call
            framed("R2\n-1^The comment is longer than 200 characters.") },
        { framed("2\nMEVREF SET\n^EXAM^1^2^01/02/2026^" + QByteArray(9980, '-')),
            framed("R2\n-1^The call is longer than 10,000 bytes: nothing was done.") },
        { framed("2\nMEVREP GET\n\xff\xfe^"), framed("R2\n-1^There is no patient \xff\xfe.") },
        { framed("2\nMEVHOST KEYS\n" + QByteArray(999, '^')), framed("R2\n" + QByteArray("0^").repeated(999) + "0") },
        { framed("2\nMEVHOST KEYS\n" + QByteArray(90000, '^')), framed("R2\n-1^These are too many keys.") },
    };
    for (const auto& [request, answer] : cases) {
        const QByteArray answers = rawExchange(signOn + request + good);
        EXPECT_TRUE(answers.contains(answer))
            << request.left(40).toStdString() << " -> " << answers.left(200).toStdString();
        EXPECT_TRUE(answers.contains("R9\n14^QUIET,IRIS")) << request.left(40).toStdString();
    }
    // Out of step: a failure, or nothing where the stream ends inside a frame.
    for (const QByteArray& stream : { QByteArray("GARBAGE!"), QByteArray("-0000001R"),
             QByteArray("1E5\0\0\0\0\0xx", 10), QByteArray("00000003") + "1\n", QByteArray(5000, '^'),
             QByteArray("$ZVERSION"), QByteArray(200000, '\xff'), QByteArray("0000") }) {
        const QByteArray answer = rawExchange(stream);
        const bool torn = stream.startsWith("0000");
        EXPECT_EQ(answer, torn ? QByteArray() : framed("F0\nThe request's length is not eight digits."))
            << stream.left(20).toStdString();
    }
}

// Runs a shell command with the engine's own programs in $gtm_dist; its exit status.
int byEngine(const QString& command, const QString& data)
{
    const QString settings = QStringLiteral("export gtm_dist=$(ls -d /usr/lib/*/fis-gtm/V*_* | sort -V | tail -n 1)\n"
                                            "cd \"$0\" && export mev_data=/proc/self/cwd gtmgbldir=app.gld\n");
    return QProcess::execute("bash", { "-c", settings + command, data });
}

TEST(Server, SaveThatTwoProcessesMakeAtTheSameMomentIsDoneOnce)
{
    RealSession real;
    QProcess servers[2];
    for (QProcess& server : servers) {
        server.start(QStringLiteral(SERVER_PROGRAM), { "--data", sharedDataFolder() });
        server.write(framed("1\nMEVHOST SIGNON\n" + QByteArray(32, 'd') + "^SORREL,ADA"));
        while (!server.peek(1000).contains("R1\n1^SORREL"))
            ASSERT_TRUE(server.waitForReadyRead(20000));
    }
    // Both have found that the save is not known, and wait until the database accepts changes again.
    ASSERT_EQ(byEngine("$gtm_dist/mupip freeze -on DEFAULT", sharedDataFolder()), 0);
    for (QProcess& server : servers)
        server.write(framed("5\nMEVREF SET\n^EXAM^1^2^01/02/2026^only once"));
    QTest::qWait(500);
    ASSERT_EQ(byEngine("$gtm_dist/mupip freeze -off DEFAULT", sharedDataFolder()), 0);
    for (QProcess& server : servers) {
        server.closeWriteChannel();
        ASSERT_TRUE(server.waitForFinished(20000));
        EXPECT_TRUE(server.readAllStandardOutput().contains(framed("R5\n1")));
    }
    const Text refusals = real.session.callList(L"MEVREF GET", L"2");
    EXPECT_EQ(QString::fromStdWString(refusals).count(u"only once"), 1);
}

TEST(Server, UnusableFolderIsNamed)
{
    RealSession real("/proc/nothing", L"");
    EXPECT_THROW(real.session.users(), Failure);
    EXPECT_EQ(real.questions, QStringList { "The data folder /proc/nothing cannot be written." });
}

TEST(Server, TwoHostsAtTheSameMomentOnAFreshMachine)
{
    const QTemporaryDir folder;
    const QString data = folder.filePath("data");
    std::vector<std::unique_ptr<QProcess>> servers;
    for (int i = 0; i < 5; ++i) {
        servers.push_back(std::make_unique<QProcess>());
        servers.back()->start(QStringLiteral(SERVER_PROGRAM), { "--data", data });
        servers.back()->write(framed("1\nMEVHOST USERS\n"));
        servers.back()->closeWriteChannel();
    }
    for (const auto& server : servers) {
        ASSERT_TRUE(server->waitForFinished(30000));
        EXPECT_TRUE(server->readAllStandardOutput().contains("R1\n1^SORREL,ADA"));
    }
}

// The state after a session was killed while it freed a block, made with the engine's own editor.
const QString LoseABlock = QStringLiteral(R"(
    printf '%s\n' "maps -busy -block=F00" "change -fileheader -kill_in_prog=1" "dump -fileheader" exit \
        | "$gtm_dist/dse" 2>&1 | grep -q 'KILLs in progress *1')");

TEST(Server, BlocksOfKilledDeletesAreFreed)
{
    const QTemporaryDir folder;
    const QString data = folder.filePath("data");
    ASSERT_EQ(QProcess::execute(SERVER_PROGRAM, { "--data", data, "--empty", "--users" }), 0);
    ASSERT_EQ(byEngine(LoseABlock, data), 0);
    EXPECT_EQ(checkDatabase(data), 0);

    // A database that is neither marked complete nor marked for removal was put there by somebody: it is kept.
    ASSERT_TRUE(QFile::remove(data + "/created"));
    EXPECT_EQ(checkDatabase(data), 1);
    EXPECT_TRUE(QFile::exists(data + "/app.dat"));
}

}
}
