// The real server over TLS: who gets in, which errors the others see, and what a lost connection costs.
#include "tests/support/ScriptedHost.h"
#include "tests/support/ServedRemotely.h"
#include "text/Pieces.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QTcpServer>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace health::test {
namespace {

class Remote : public testing::Test {
protected:
    static void SetUpTestSuite() { served = std::make_unique<ServedRemotely>(); }
    static void TearDownTestSuite() { served.reset(); }

    static QString file(const char* name) { return served->file(QString::fromLatin1(name)); }
    static std::string text(const QString& text) { return text.toStdString(); }
    static RemoteServer as(const char* name) { return served->as(QString::fromLatin1(name)); }

    // The text that the user reads when a sign-on fails: the reason in the question, or the failure.
    static std::string refusal(const RemoteServer& server, const Text& user = L"SORREL,ADA", int timeout = 15000)
    {
        RemoteSession remote(server, timeout);
        try {
            remote.session.signOn(user);
        } catch (const CallAbandoned&) {
            return "Try again? " + remote.asked();
        } catch (const Failure& failure) {
            return failure.what() + remote.asked();
        }
        return "signed on";
    }

    static std::unique_ptr<ServedRemotely> served;
};

std::unique_ptr<ServedRemotely> Remote::served;

TEST_F(Remote, RightCertificateListsAPatient)
{
    RemoteSession remote(as("sorrel"));
    EXPECT_EQ(remote.session.users(), L"1^SORREL,ADA^Provider\r\n"); // nobody else
    remote.session.signOn(L"SORREL,ADA");
    EXPECT_EQ(Piece(remote.session.callText(L"MEVHOST PATIENT", L"14"), L"^", 2), L"QUIET,IRIS");
    // Long replies and requests arrive complete.
    const Text list = remote.session.callList(L"MEVVELD GET", L"15");
    EXPECT_EQ(std::count(list.begin(), list.end(), L'\n'), 5000);
    EXPECT_EQ(remote.session.callText(L"MEVHOST KEYS", Text(30000, L'x')), L"0");
    EXPECT_EQ(remote.asked(), "");
    // The audit has the certificate and the address of the client.
    QProcess audit;
    audit.start(QStringLiteral(SERVER_PROGRAM), { "--data", sharedDataFolder(), "--audit", "--user", "SORREL,ADA" });
    ASSERT_TRUE(audit.waitForFinished(30000));
    EXPECT_TRUE(QString::fromUtf8(audit.readAllStandardOutput())
                    .contains(QRegularExpression(
                        "certificate SORREL,ADA \\(number [0-9A-F]+\\), from (127\\.0\\.0\\.1|[0:]*1)\n")));
}

// Requests that arrive together wait in the server's buffer: it must not poll the socket before it has read them.
TEST_F(Remote, CallsThatAreAskedAheadAreAnsweredWithoutDelay)
{
    RemoteSession remote(as("sorrel"));
    remote.session.signOn(L"SORREL,ADA");
    QElapsedTimer waited;
    waited.start();
    for (int round = 0; round < 5; ++round) {
        std::vector<ExpectedCall> calls;
        for (const TextView name : { L"MEVVELD GET", L"MEVVAST GET", L"MEVVTXC GET", L"MEVREF GET" })
            calls.push_back({ ExpectedCall::Form::Lines, Text(name), L"1" });
        remote.session.expectCalls(calls);
        for (const ExpectedCall& call : calls)
            EXPECT_TRUE(remote.session.callList(call.name, call.parameter).ends_with(L"\r\n")) << narrow(call.name);
        remote.session.expectCalls({});
    }
    EXPECT_LT(waited.elapsed(), 2000);
    EXPECT_EQ(remote.asked(), "");
}

TEST_F(Remote, HostProgramListsAPatientForTheCertificatesUser)
{
    QProcess registration;
    registration.start(HOST_PROGRAM, { "--register", PANEL_LIBRARY });
    ASSERT_TRUE(registration.waitForFinished() && registration.exitCode() == 0);
    const auto run = [](const QStringList& arguments) {
        QProcess process;
        process.start(HOST_PROGRAM, arguments + QStringList { "--patient", "14", "--list" });
        process.waitForFinished();
        // Its output, or its last error.
        const QByteArray printed = process.readAllStandardOutput().trimmed();
        const QByteArray complaint = process.readAllStandardError().trimmed().split('\n').last();
        return (process.exitCode() == 0 ? printed : complaint).toStdString();
    };
    const QStringList server { "--server", QStringLiteral("tls://localhost:%1").arg(served->port), "--authority",
        file("authority.pem") };
    const QStringList certificate { "--certificate", file("glass.pem"), "--key", file("glass.key") };
    EXPECT_EQ(run(server + certificate), "Quiet, Iris (14)");
    EXPECT_EQ(run(server + certificate + QStringList { "--user", "SORREL,ADA" }),
        "Your certificate is for GLASS,VIOLA, not for SORREL,ADA.");
    EXPECT_EQ(run(server), "The server localhost requires a client certificate.");
    EXPECT_EQ(run(server.mid(0, 2)),
        "--server requires --authority: the file of the authority that has issued the server's certificate.");
    EXPECT_EQ(run({ "--server", "localhost:1" }), "--server takes an address such as tls://host:port.");
    EXPECT_EQ(run(certificate), "--certificate, --key and --authority require --server.");
}

TEST_F(Remote, CertificatesThatAreRefused)
{
    const std::pair<const char*, std::string> cases[] = {
        { "", "The server localhost requires a client certificate." },
        { "expired", "The server refused your certificate: it has expired." },
        { "revoked", "The server refused your certificate: it has been revoked." },
        { "selfsigned", "The server refused your certificate: it is not from the server's authority." },
        { "foreign", "The server refused your certificate: it is not from the server's authority." },
        { "server", "The server refused your certificate: it is not valid for this." },
        { "mail", "The server refused your certificate: it is not valid for this." },
        { "nameless", "The server finds no user's name in your certificate." },
    };
    for (const auto& [name, text] : cases)
        EXPECT_EQ(refusal(as(name)), "Try again? " + text) << name;
    // Names that no user can have, in certificates that are valid otherwise.
    for (const char* const subject :
        { "/CN=SORREL,ADA/CN=BARE,JUNO", "/CN=SORREL^ADA", "/CN=SORREL\\\\,ADA", "/CN=1\n\n2" }) {
        EXPECT_EQ(served->administer("sh",
                      { "-c",
                          "openssl req -new -config authority.cnf -key bare.key -subj \"$0\" -out odd.csr && cp "
                          "bare.key odd.key && "
                          "openssl ca -batch -config authority.cnf -extensions client -in odd.csr -out odd.pem",
                          subject }),
            "");
        EXPECT_EQ(refusal(as("odd")), "Try again? The server finds no user's name in your certificate.") << subject;
    }
    // No other name than that of the certificate, known or not.
    EXPECT_EQ(refusal(as("sorrel"), L"GLASS,VIOLA"), "Your certificate is for SORREL,ADA, not for GLASS,VIOLA.");
    EXPECT_EQ(refusal(as("sorrel"), L"SORREL,ADA "), "Your certificate is for SORREL,ADA, not for SORREL,ADA .");
    EXPECT_EQ(refusal(as("sorrel"), L"NOBODY"), "Your certificate is for SORREL,ADA, not for NOBODY.");
    EXPECT_EQ(refusal(as("sorrel")), "signed on");
}

TEST_F(Remote, OnlyCiphersWithForwardSecrecyAndAuthentication)
{
    const auto shake = [](const QString& options) {
        return served->administer("sh",
            { "-c", "openssl s_client -connect localhost:$0 -cert sorrel.pem -key sorrel.key $1 </dev/null",
                QString::number(served->port), options });
    };
    for (const char* const taken : { "-tls1_3", "-tls1_2", "-tls1_2 -cipher ECDHE-ECDSA-AES128-GCM-SHA256" })
        EXPECT_EQ(shake(taken), "") << taken;
    for (const char* const refused : { "-tls1_2 -cipher ECDHE-ECDSA-AES128-SHA",
             "-tls1_2 -cipher ECDHE-ECDSA-AES128-SHA256", "-tls1_1 -cipher ALL:@SECLEVEL=0" })
        EXPECT_NE(shake(refused), "") << refused;
}

TEST_F(Remote, UnitsLeaveLittleExposed)
{
    if (QStandardPaths::findExecutable("systemd-analyze").isEmpty())
        GTEST_SKIP() << "systemd-analyze is not installed";
    for (const QString unit : { "personal-health.service", "personal-health-door.service" })
        EXPECT_EQ(served->administer("systemd-analyze",
                      { "security", "--offline=true", "--threshold=15", ServedRemotely::script(unit) }),
            "");
}

TEST_F(Remote, ServersThatAreNotTrustedOrNotThere)
{
    RemoteServer server = as("sorrel");
    server.authorityFile = file("foreign-authority.pem");
    EXPECT_EQ(refusal(server),
        "Try again? The server's certificate is not from an authority in " + text(server.authorityFile)
            + ". The connection may not be secure; nothing was sent.");

    const ServedRemotely elsewhere("elsewhere");
    EXPECT_EQ(refusal(elsewhere.as("sorrel")),
        "Try again? The server's certificate is not for localhost. The connection may not be secure; nothing was "
        "sent.");

    server = as("sorrel");
    server.port = freePort();
    EXPECT_EQ(refusal(server), "Try again? No server answers at localhost, port " + std::to_string(server.port) + ".");
    server.host = "no-such-computer.invalid";
    EXPECT_EQ(refusal(server), "Try again? There is no computer named no-such-computer.invalid.");

    QTcpServer silent;
    silent.listen(QHostAddress::LocalHost);
    server = as("sorrel");
    server.port = silent.serverPort();
    EXPECT_EQ(
        refusal(server, L"SORREL,ADA", 300), "Try again? The server localhost did not answer within 0.3 seconds.");
}

TEST_F(Remote, FilesThatCannotBeUsedAreNamed)
{
    const std::string certificate = text(file("sorrel.pem"));
    const std::string key = text(file("sorrel.key"));
    const std::string none = text(file("none.pem"));
    const std::string otherKey = text(file("bare.key"));
    const std::tuple<std::string, std::string, std::string> cases[] = {
        { none, key, none + " cannot be read: No such file or directory." },
        { key, key, "There is no certificate in " + key + "." },
        { certificate, certificate, "There is no private key in " + certificate + ", or a pass phrase protects it." },
        { certificate, otherKey,
            "The private key in " + otherKey + " does not match the certificate in " + certificate + "." },
    };
    for (const auto& [certificateFile, keyFile, reason] : cases) {
        RemoteServer server = as("sorrel");
        server.certificateFile = QString::fromStdString(certificateFile);
        server.keyFile = QString::fromStdString(keyFile);
        EXPECT_EQ(refusal(server), "Try again? " + reason);
    }
}

TEST_F(Remote, RevokingTakesEffectWithoutARestart)
{
    EXPECT_EQ(refusal(as("brightwater"), L"BRIGHTWATER,NELL"), "signed on");
    RemoteSession other(as("sorrel"));
    other.session.signOn(L"SORREL,ADA");
    EXPECT_EQ(served->authority({ "-revoke", "brightwater.pem" }), "");
    EXPECT_EQ(served->authority({ "-gencrl", "-out", "new.crl" }), "");
    EXPECT_EQ(served->addRevokedList("new.crl"), "");
    EXPECT_EQ(refusal(as("brightwater"), L"BRIGHTWATER,NELL"),
        "Try again? The server refused your certificate: it has been revoked.");
    EXPECT_EQ(refusal(as("sorrel")), "signed on");
    EXPECT_EQ(Piece(other.session.callText(L"MEVHOST PATIENT", L"14"), L"^", 2), L"QUIET,IRIS");
    EXPECT_EQ(other.asked(), ""); // other sessions continue
}

TEST_F(Remote, ListsOfRevokedCertificatesThatWouldShutEverybodyOut)
{
    const QStringList old { "-gencrl", "-crl_lastupdate", "20200101000000Z", "-crl_nextupdate", "20200201000000Z" };
    ServedRemotely server;
    EXPECT_EQ(server.authority(old + QStringList { "-out", "old.crl" }), "");
    EXPECT_EQ(server.addRevokedList("old.crl"), "add-revoked-list: old.crl expired on Feb  1 00:00:00 2020 GMT.");
    EXPECT_EQ(server.authority({ "-config", "foreign-authority.cnf", "-gencrl", "-out", "foreign.crl" }), "");
    EXPECT_EQ(server.addRevokedList("foreign.crl"),
        "add-revoked-list: foreign.crl is not a list of revoked certificates from the authority in ./authority.pem.");
    EXPECT_EQ(refusal(server.as("sorrel")), "signed on");

    EXPECT_EQ(server.authority({ "-gencrl", "-crl_lastupdate", "20990101000000Z", "-crl_nextupdate", "20990201000000Z",
                  "-out", "future.crl" }),
        "");
    EXPECT_EQ(server.addRevokedList("future.crl"),
        "add-revoked-list: future.crl is not valid before Jan  1 00:00:00 2099 GMT: the clock of the authority's "
        "machine, "
        "or this one's, is wrong.");
    EXPECT_EQ(server.authority({ "-gencrl", "-out", "new.crl" }), "");
    EXPECT_EQ(
        server.administer("sh", { "-c", "umask 077; $0 new.crl . revoked.pem", server.script("add-revoked-list") }),
        "");
    EXPECT_TRUE(QFile::permissions(server.file("revoked-lists.pem")) & QFile::ReadOther);
    EXPECT_EQ(server.addRevokedList("new.crl", { "sorrel.pem" }),
        "add-revoked-list: sorrel.pem is not refused: sorrel.pem: OK");
    EXPECT_TRUE(server.addRevokedList("revoked.crl")
                    .starts_with("add-revoked-list: revoked.crl is older than the list in force, "));
    EXPECT_EQ(refusal(server.as("sorrel")), "signed on");

    // A list expires where nobody makes new ones: the error names the cause.
    server.stop();
    QFile::remove(server.file("revoked-lists.pem"));
    ASSERT_TRUE(QFile::copy(server.file("old.crl"), server.file("revoked-lists.pem")));
    server.start();
    EXPECT_EQ(refusal(server.as("sorrel")),
        "Try again? The server's list of revoked certificates is out of date. Contact its administrator.");
    EXPECT_EQ(refusal(server.as("expired")), "Try again? The server refused your certificate: it has expired.");
}

TEST_F(Remote, IntermediateAuthority)
{
    const ServedRemotely server("server", { "two-step" });
    EXPECT_EQ(refusal(server.as("sorrel")), "signed on");
    EXPECT_EQ(refusal(server.as("revoked")), "Try again? The server refused your certificate: it has been revoked.");
    // The root revokes the issuing authority, and with it all its users.
    EXPECT_EQ(server.authority({ "-config", "root.cnf", "-revoke", "authority.pem" }), "");
    EXPECT_EQ(server.authority({ "-config", "root.cnf", "-gencrl", "-out", "new.crl" }), "");
    EXPECT_EQ(server.addRevokedList("new.crl", { "sorrel.pem" }), "");
    EXPECT_EQ(refusal(server.as("sorrel")), "Try again? The server refused your certificate: it has been revoked.");
}

sockaddr_in address(const char* number, int port = 0)
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    ::inet_pton(AF_INET, number, &address.sin_addr);
    return address;
}

// Every other connection comes from another address; every third one begins to speak TLS.
int connectTo(int port, std::size_t number)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in from = address(number % 2 == 0 ? "127.0.0.1" : "127.0.0.2");
    const sockaddr_in to = address("127.0.0.1", port);
    ::bind(socket, reinterpret_cast<const sockaddr*>(&from), sizeof from);
    ::connect(socket, reinterpret_cast<const sockaddr*>(&to), sizeof to);
    if (number % 3 == 0)
        ::send(socket, "\x16\x03\x01\x02\x00\x01", 6, MSG_NOSIGNAL);
    return socket;
}

TEST_F(Remote, ThousandsOfSilentConnectionsKeepNobodyOut)
{
    const rlim_t needed = 12000;
    rlimit limit;
    ::getrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_max < needed)
        GTEST_SKIP() << "needs " << needed << " open files";
    limit.rlim_cur = needed;
    ::setrlimit(RLIMIT_NOFILE, &limit);

    const std::size_t count = 5000;
    std::atomic<std::size_t> opened = 0;
    const std::jthread loiterers([&](const std::stop_token& stop) { // opens each connection again that is closed
        std::vector<int> sockets;
        while (!stop.stop_requested()) {
            std::erase_if(sockets, [](int socket) {
                char byte;
                return (::recv(socket, &byte, 1, MSG_DONTWAIT) >= 0 || errno != EAGAIN) && ::close(socket) == 0;
            });
            for (int burst = 0; burst < 500 && sockets.size() < count; ++burst)
                sockets.push_back(connectTo(served->port, opened++));
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        std::ranges::for_each(sockets, ::close);
    });
    QElapsedTimer waited;
    // Until the door has closed the first of them.
    for (waited.start(); opened < count + count / 2 && waited.elapsed() < 15000; QThread::msleep(200)) {
        QElapsedTimer signingOn;
        signingOn.start();
        EXPECT_EQ(refusal(as("sorrel")), "signed on");
        EXPECT_LT(signingOn.elapsed(), 2000);
    }
    EXPECT_GE(opened, count + count / 2);
}

TEST_F(Remote, SessionGoesOnAfterALostConnection)
{
    EventNames changes, refresh;
    RemoteSession remote(as("sorrel"));
    remote.session.signOn(L"SORREL,ADA");
    remote.session.registerEvent(L"VXR.12", changes);
    remote.session.registerEvent(L"REFRESH", refresh);
    const auto killSessions = [] {
        for (const pid_t process : served->sessions())
            ::kill(process, SIGKILL);
    };
    const auto call = [&] { return Piece(remote.session.callText(L"MEVHOST PATIENT", L"14"), L"^", 2); };
    call(); // after its answer the server knows the subscriptions
    killSessions(); // while the session is idle: it reconnects silently
    refresh.waitFor(1);
    EXPECT_EQ(refresh.names, Transcript { L"REFRESH" });
    EXPECT_EQ(call(), L"QUIET,IRIS");
    notify("VXR.12.REF");
    changes.waitFor(1);
    EXPECT_EQ(changes.names, Transcript { L"VXR.12.REF" });
    EXPECT_EQ(remote.asked(), "");

    killSessions(); // before a call
    remote.retries = 1;
    EXPECT_EQ(call(), L"QUIET,IRIS");
    EXPECT_EQ(remote.asked(), "The server localhost has closed the connection.");

    // The whole server stops: the user is asked until it is back.
    remote.questions.clear();
    remote.retries = 5;
    remote.beforeRetry = [&] {
        if (remote.questions.size() == 3)
            served->start();
    };
    served->stop();
    EXPECT_EQ(call(), L"QUIET,IRIS");
    const std::string away = "\nNo server answers at localhost, port " + std::to_string(served->port) + ".";
    EXPECT_EQ(remote.asked(), "The server localhost has closed the connection." + away + away);
}

}
}
