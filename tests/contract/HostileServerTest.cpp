// The real server against hostile clients: every request is answered by a reply or a failure, executes nothing, shows
// nothing of other patients, changes nothing if it is refused, and leaves the session working.
#include "host/session/FrameCodec.h"
#include "tests/support/RealServer.h"
#include "tests/support/ScriptedHost.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace health::test {
namespace {

// A separate data folder: these tests change it freely.
QString hostileFolder()
{
    static const QTemporaryDir folder;
    return folder.filePath("data");
}

// A session without the host's checks: any bytes as name and parameter.
class RawSession {
public:
    explicit RawSession(const QByteArray& user = "SORREL,ADA")
    {
        m_server.start(QStringLiteral(SERVER_PROGRAM), { "--data", hostileFolder() });
        if (!user.isEmpty()) {
            EXPECT_TRUE(text("MEVHOST SIGNON", QByteArray(32, 'c') + "^" + user).contains(user));
        }
    }
    ~RawSession()
    {
        m_server.closeWriteChannel();
        m_server.waitForFinished(20000);
    }
    RawSession(const RawSession&) = delete;
    RawSession& operator=(const RawSession&) = delete;

    Answer call(const QByteArray& name, const QByteArray& parameter)
    {
        // Numbers are unique across sessions: no call is taken for a repetition.
        const QByteArray number = QByteArray::number(s_number += 1);
        m_server.write(framed(number + '\n' + name + '\n' + parameter));
        const QDeadlineTimer deadline(30000);
        while (!deadline.hasExpired()) {
            m_reader.feed(m_server.readAllStandardOutput());
            while (const auto answer = m_reader.next()) {
                if (answer->kind == Answer::Kind::Event || answer->kind == Answer::Kind::Progress)
                    continue;
                EXPECT_EQ(answer->number, number.toLongLong())
                    << name.toStdString() << answer->text.left(200).toStdString();
                return *answer;
            }
            if (m_server.state() == QProcess::NotRunning)
                break;
            m_server.waitForReadyRead(100);
        }
        ADD_FAILURE() << "no answer to " << name.toStdString() << ' ' << parameter.left(80).toStdString();
        return { Answer::Kind::Failed, 0, {}, "no answer" };
    }

    QByteArray text(const QByteArray& name, const QByteArray& parameter) { return call(name, parameter).text; }

private:
    static inline long long s_number = 0;
    QProcess m_server;
    FrameReader m_reader;
};

struct ServerCall {
    QByteArray name;
    bool changes = false;
    bool beforeSignOn = false;
};

// The server's own table of calls, so that new calls are tested too.
const std::vector<ServerCall>& callTable()
{
    static const std::vector<ServerCall> table = [] {
        std::vector<ServerCall> calls;
        QFile routine(QFileInfo(QStringLiteral(SERVER_PROGRAM)).path() + QStringLiteral("/routines/MEVSESSION.m"));
        EXPECT_TRUE(routine.open(QIODevice::ReadOnly)) << routine.fileName().toStdString();
        const QByteArray text = routine.readAll();
        for (const QByteArray& line : text.sliced(text.indexOf("\nTABLE ;")).split('\n')) {
            const auto parts = line.trimmed().mid(2).split(';');
            if (line.startsWith(" ;;MEV") && parts.size() == 3)
                calls.push_back({ parts[0], parts[2].contains('W'), parts[2].contains('O') });
        }
        EXPECT_GT(calls.size(), 40u);
        return calls;
    }();
    return table;
}

// A valid parameter of each call, whose pieces are replaced by hostile texts one by one. V is a visit of patient 5, W
// one of patient 16, and I, E are their records. Calls that are not listed get a patient.
QByteArray goodParameter(RawSession& session, const QByteArray& name)
{
    static const std::map<QByteArray, QByteArray> parameters {
        { "MEVHOST SIGNON", QByteArray(32, 'c') + "^SORREL,ADA" }, { "MEVHOST KEYS", "PROVIDER^MEVZ CAC" },
        { "MEVHOST PATIENTS", "QUIET" }, { "MEVHOST VISIT", "V" }, { "MEVHOST SUBSCRIBE", "VXR.5" },
        { "MEVHOST UNSUBSCRIBE", "VXR.5" }, { "MEVUTL CHKSEC", "PROVIDER|MEVZ CAC^MEV DISABLE REP HIST EDITING" },
        { "MEVUTL GETPARM", "RepHist-PedWtOpt" }, { "MEVUTL SETPARM", "RepHist-PedWtOpt^1" }, { "MEVUTL GETRPT", "V" },
        { "MEVUTL DICLKUP", "60^GLU^^^250^^^^.01" }, { "MEVICDLK ICDLKUP", "^ASTHMA^^^250" },
        { "MEVUTL ICDLEX", "^ASTHMA^^^250" }, { "MEVVCPT CPTLKUP", "^SPIRO^^^250" },
        { "MEVUTL LEXLKUP", "^SPIRO^^^250" }, { "MEVCPTPR OTHCATS", "^LAB^^^250" }, { "MEVVTC CMLKUP", "^HOME^^^250" },
        { "MEVREP SET", "14^G3P1LC1SA1TA0^01/05/2020^NONE^01/25/2020^1^02/05/2020^SONOGRAM" },
        { "MEVBMSR SET", "5^7 2^1^6M^2W^5M^1" }, { "MEVVIF SET", "I^V^3" }, { "MEVVIF DEL", "I" },
        { "MEVVELD SET", "^V^Independent^^^Needs Help^^^^^^^^^Same^No" },
        { "MEVVAST SET", "^V^2^90^80^450^Yes^No^Yes^No" },
        { "MEVVAST SETREG", "5^A^01/05/2020^01/06/2020^01/07/2020^1^well" }, { "MEVVTXC SET", "^V^P^01/05/2020^1" },
        { "MEVREF SET", "^EXAM^2^5^01/05/2020^not today" },
        { "MEVVER SET", "E^W^E^A^O^by boat^R^self^D^^3200105.08^^calm^VEN.`1" }, { "MEVVER DEL", "E" },
        { "MEVVER GET", "16" }, { "MEVREF REFLIST", "EKG" }
    };
    const auto found = parameters.find(name);
    const QByteArray parameter = found == parameters.end() ? QByteArray("5") : found->second;
    static constexpr std::array<const char*, 3> numbers[] = { { "V", "MEVHOST VISITS", "5" },
        { "I", "MEVVIF GET", "5" }, { "W", "MEVHOST VISITS", "16" }, { "E", "MEVVER GET", "16" } };
    QByteArrayList pieces = parameter.split('^');
    for (const auto& [letter, call, patient] : numbers) {
        // Only the first: the codes of emergency visits are letters, too.
        if (const auto place = pieces.indexOf(letter); place >= 0 && place < 2)
            pieces[place] = session.text(call, patient).split('^').first();
    }
    return pieces.join('^');
}

QString executedFile() { return hostileFolder() + QStringLiteral("/executed"); }

const std::vector<QByteArray>& hostileTexts()
{
    static const std::vector<QByteArray> texts = [] {
        const QByteArray touch = "\"touch " + executedFile().toUtf8() + "\"";
        std::vector<QByteArray> list { "", "^", "|", "~", "\"", "\"\"", "'", "`", "`1", ")", "1,0)", ";", "//",
            "$ZVERSION", "$ZSYSTEM", "$$HALT^MEVSESSION", "HALT", "@x", "@\"^MEVPAT\"", "^MEVPAT(2,0)",
            "\"_$ZVERSION_\"", "_$ZVERSION_", "$C(1)", "$CHAR(94)", "\")_$ZVERSION_(\"", "X ZSYSTEM " + touch,
            "ZSYSTEM " + touch, "I $ZSYSTEM(" + touch + ")", "K ^MEVPAT", "\" KILL ^MEVPAT ;", "I 1 ZSYSTEM " + touch,
            "\n", "\r\n", "\r\n9^^^x\r\n", "\x01", QByteArray(1, '\0'), "\x1b[2J", "\x7f", "\xff\xfe", "\xc3\xa9", "0",
            "-1", "1E9", "00001", "1.5", ".5", "999999999999999999", "1E999", "9999999", "2", "13" };
        for (const char letter : { 'A', '9', '^', '|', '"', ',' })
            for (const int length : { 300, 40000 })
                list.push_back(QByteArray(length, letter));
        return list;
    }();
    return texts;
}

// An answer must not contain the result of an executed text, an engine message that was not trapped, or the name of
// another patient.
void expectHarmless(const Answer& answer, const QByteArray& name, const QByteArray& parameter)
{
    for (const char* text : { "GT.M V", "-E-", "%GTM", "OKONKWO", "could not carry out" })
        EXPECT_FALSE(answer.text.contains(text)) << name.toStdString() << '(' << parameter.left(200).toStdString()
                                                 << ") " << answer.text.left(300).toStdString();
}

bool isRefusal(const Answer& answer)
{
    return answer.kind == Answer::Kind::Failed
        || modShared::RpcErrorCode(widen(answer.text.left(100).toStdString())) != 0;
}

// The records of the patients that the parameters name, of one kind or (for an empty kind) of all.
QByteArray snapshot(RawSession& session, const QByteArray& kind = {})
{
    QByteArray all;
    for (const ServerCall& call : callTable()) {
        const bool reads = call.name.contains(" GET") && !call.name.startsWith("MEVUTL");
        for (const char* patient : { "5", "14", "16" }) {
            if (reads && call.name.startsWith(kind))
                all += session.text(call.name, patient) + '\f';
        }
    }
    return all + session.text("MEVUTL GETPARM", "RepHist-PedWtOpt");
}

void expectWorking(RawSession& session)
{
    EXPECT_TRUE(session.text("MEVHOST PATIENT", "14").startsWith("14^QUIET,IRIS"));
    EXPECT_FALSE(QFileInfo::exists(executedFile()));
}

// The piece of a parameter replaced.
QByteArray withPiece(const QByteArray& parameter, qsizetype index, const QByteArray& text)
{
    QByteArrayList pieces = parameter.split('^');
    pieces[index] = text;
    return pieces.join('^');
}

// Sends a call with each hostile text in one of its pieces.
void tryTexts(RawSession& session, const ServerCall& call, const QByteArray& good, qsizetype piece)
{
    const QByteArray kind = call.changes ? call.name.split(' ').first() : QByteArray("-");
    QByteArray before = snapshot(session, kind);
    for (const QByteArray& text : hostileTexts()) {
        const QByteArray parameter = withPiece(good, piece, text);
        // An empty search lists everybody, a number finds that patient.
        if ((call.name == "MEVHOST PATIENTS" && text.size() < 2) || parameter == "2")
            continue;
        const Answer answer = session.call(call.name, parameter);
        expectHarmless(answer, call.name, parameter);
        if (!call.changes)
            continue;
        const QByteArray after = snapshot(session, kind);
        EXPECT_TRUE(after == before || !isRefusal(answer))
            << "changed by " << call.name.toStdString() << '(' << parameter.left(200).toStdString();
        before = after;
    }
}

TEST(HostileServer, EveryCallTakesEveryTextInEveryPiece)
{
    RawSession session;
    for (const ServerCall& call : callTable()) {
        const QByteArray good = goodParameter(session, call.name);
        for (qsizetype piece = 0; piece <= good.count('^'); ++piece)
            tryTexts(session, call, good, piece);
        expectWorking(session);
    }
}

TEST(HostileServer, RandomFramesAreEachAnswered)
{
    std::mt19937 random(20260315);
    const auto below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    const auto& texts = hostileTexts();
    const auto bytes = [&] {
        QByteArray some(static_cast<qsizetype>(below(60)), 0);
        std::generate(some.begin(), some.end(), [&] { return static_cast<char>(random()); });
        return some;
    };
    const auto parameter = [&] {
        QByteArray pieces = below(3) == 0 ? QByteArray() : QByteArray::number(static_cast<int>(below(20)));
        for (std::size_t count = below(9); count > 0; --count)
            pieces += '^' + (below(3) == 0 ? bytes() : texts[below(texts.size() - 6)].left(300));
        return pieces;
    };
    const char* const purposes[] = { "", "", " LIST", " EDIT", " CHECK 2 3 5", " CHECK", " ", " LIST EDIT", " SAVE" };
    constexpr int Frames = 2000;
    const int rounds = qEnvironmentVariableIsSet("FUZZ_ROUNDS") ? qEnvironmentVariableIntValue("FUZZ_ROUNDS") : 2;
    for (int round = 0; round < rounds; ++round) {
        QByteArray stream = framed("1\nMEVHOST SIGNON\n" + QByteArray(32, "abcdef"[round % 6]) + "^SORREL,ADA");
        for (int i = 0; i < Frames; ++i) {
            const QByteArray number = below(20) == 0 ? bytes() : QByteArray::number(static_cast<int>(2 + below(5000)));
            const QByteArray name = below(10) == 0 ? bytes() : callTable()[below(callTable().size())].name;
            stream += framed(below(10) == 0
                    ? bytes()
                    : number + purposes[below(std::size(purposes))] + '\n' + name + '\n' + parameter());
        }
        // With bytes changed or cut off the stream gets out of step; all answers until then are complete frames.
        for (int time = 0; time < 3; ++time) {
            QByteArray torn = stream.left(static_cast<qsizetype>(below(5000)));
            for (std::size_t count = below(4); count > 0 && !torn.isEmpty(); --count)
                torn[static_cast<qsizetype>(below(static_cast<std::size_t>(torn.size())))] =
                    static_cast<char>(random());
            FrameReader answers;
            answers.feed(rawExchange(torn, hostileFolder()));
            while (const auto answer = answers.next())
                expectHarmless(*answer, "torn", torn);
            EXPECT_EQ(answers.pending(), 0) << torn.toHex().toStdString();
        }
        stream += framed("9999\nMEVHOST PATIENT\n14");
        FrameReader reader;
        reader.feed(rawExchange(stream, hostileFolder()));
        int answers = 0;
        QByteArray last;
        while (const auto answer = reader.next()) {
            if (answer->kind != Answer::Kind::Reply && answer->kind != Answer::Kind::Failed)
                continue;
            ++answers;
            last = answer->text;
            for (const char* text : { "GT.M V", "-E-", "%GTM", "could not carry out" })
                EXPECT_FALSE(last.contains(text)) << last.left(300).toStdString();
        }
        EXPECT_EQ(reader.pending(), 0);
        EXPECT_EQ(answers, Frames + 2) << round;
        EXPECT_TRUE(last.startsWith("14^QUIET,IRIS")) << last.left(100).toStdString();
        EXPECT_FALSE(QFileInfo::exists(executedFile()));
    }
}

TEST(HostileServer, WithoutSignOnNothingIsAnswered)
{
    RawSession session("");
    for (const ServerCall& call : callTable()) {
        if (call.beforeSignOn)
            continue;
        const Answer answer = session.call(call.name, "5");
        EXPECT_EQ(answer.kind, Answer::Kind::Failed) << call.name.toStdString();
        EXPECT_EQ(answer.text, "Sign on first.");
    }
}

TEST(HostileServer, UserWithoutKeysChangesNothing)
{
    RawSession provider;
    RawSession bare("BARE,JUNO");
    const QByteArray before = snapshot(bare);
    for (const ServerCall& call : callTable()) {
        // Refusals and the user's own weight unit need no key.
        if (!call.changes || call.name.startsWith("MEVREF") || call.name == "MEVUTL SETPARM")
            continue;
        const QByteArray parameter = goodParameter(provider, call.name);
        const Answer answer = bare.call(call.name, parameter);
        EXPECT_TRUE(answer.kind == Answer::Kind::Reply && answer.text.startsWith("-1^You "))
            << call.name.toStdString() << '(' << parameter.toStdString() << ") " << answer.text.left(200).toStdString();
    }
    for (const char* parameter :
        { "MEVZ PEDIATRIC EDIT^1", "PROVIDER^1", "RepHist-PedWtOpt\"^1", "KEY\",\"PROVIDER^1" })
        EXPECT_TRUE(bare.text("MEVUTL SETPARM", parameter).startsWith("-1^")) << parameter;
    EXPECT_EQ(snapshot(bare), before);
    EXPECT_EQ(bare.text("MEVHOST KEYS", "PROVIDER^MEVZ CAC^MEVZ PEDIATRIC EDIT"), "0^0^0");
}

TEST(HostileServer, LongListsAndNamesTakeNoTime)
{
    RawSession session;
    QElapsedTimer time;
    time.start();
    for (const char letter : { '^', '|', 'A', '\n', ' ' }) {
        const QByteArray text(990000, letter);
        for (const ServerCall& call : callTable())
            expectHarmless(session.call(call.name, text), call.name, text);
        expectHarmless(session.call(text, {}), "long name", {});
    }
    EXPECT_LT(time.elapsed(), 20000);
    expectWorking(session);
}

TEST(HostileServer, TheDatabaseIsWhole)
{
    EXPECT_EQ(QProcess::execute(SERVER_PROGRAM, { "--data", hostileFolder(), "--check" }), 0);
}

}
}
