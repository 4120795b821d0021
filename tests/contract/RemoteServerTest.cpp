// The real server over TLS: who gets in, which errors the others see, and what a lost connection costs.
#include "tests/support/EventNames.h"
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
        AnySession<TlsTransport> remote(server, timeout);
        try {
            remote.session.signOn(user);
        } catch (const CallAbandoned&) {
            return "Try again? " + remote.asked();
        } catch (const Failure& failure) {
            return failure.what() + remote.asked();
        }
        return "signed on";
    }

    static void expectRefused(const RemoteServer& server, const std::string& reason, int timeout = 15000)
    {
        EXPECT_EQ(refusal(server, L"SORREL,ADA", timeout), "Try again? " + reason) << text(server.certificateFile);
    }

    static std::unique_ptr<ServedRemotely> served;
};

constexpr auto Revoked = "The server refused your certificate: it has been revoked.";
constexpr auto NoName = "The server finds no user's name in your certificate.";

std::unique_ptr<ServedRemotely> Remote::served;

TEST_F(Remote, RightCertificateListsAPatient)
{
    AnySession<TlsTransport> remote(as("sorrel"));
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
    AnySession<TlsTransport> remote(as("sorrel"));
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

TEST_F(Remote, CertificatesServersAndFilesThatAreRefused)
{
    const std::string foreign = "The server refused your certificate: it is not from the server's authority.";
    const std::string invalid = "The server refused your certificate: it is not valid for this.";
    const std::pair<const char*, std::string> certificates[] = {
        { "", "The server localhost requires a client certificate." },
        { "expired", "The server refused your certificate: it has expired." }, { "revoked", Revoked },
        { "selfsigned", foreign }, { "foreign", foreign }, { "server", invalid }, { "mail", invalid },
        { "nameless", NoName }
    };
    for (const auto& [name, reason] : certificates)
        expectRefused(as(name), reason);
    // Names that no user can have, in certificates that are valid otherwise.
    const QString issue = "openssl req -new -config authority.cnf -key bare.key -subj \"$0\" -out odd.csr && "
                          "cp bare.key odd.key && openssl ca -batch -config authority.cnf -extensions client "
                          "-in odd.csr -out odd.pem";
    for (const char* const subject :
        { "/CN=SORREL,ADA/CN=BARE,JUNO", "/CN=SORREL^ADA", "/CN=SORREL\\\\,ADA", "/CN=1\n\n2" }) {
        EXPECT_EQ(served->administer("sh", { "-c", issue, subject }), "");
        expectRefused(as("odd"), NoName);
    }
    // No other name than that of the certificate, known or not.
    for (const Text name : { L"GLASS,VIOLA", L"SORREL,ADA ", L"NOBODY" })
        EXPECT_EQ(refusal(as("sorrel"), name), "Your certificate is for SORREL,ADA, not for " + narrow(name) + ".");

    // Servers that are not trusted, or not there.
    const ServedRemotely elsewhere("elsewhere");
    QTcpServer silent;
    silent.listen(QHostAddress::LocalHost);
    const std::string closed = std::to_string(freePort());
    const auto changed = [](auto RemoteServer::*part, auto value) {
        RemoteServer server = as("sorrel");
        server.*part = value;
        return server;
    };
    const std::string unsafe = ". The connection may not be secure; nothing was sent.";
    const auto path = [](const char* name) { return text(file(name)); };
    const std::pair<RemoteServer, std::string> servers[] = {
        { changed(&RemoteServer::authorityFile, file("foreign-authority.pem")),
            "The server's certificate is not from an authority in " + path("foreign-authority.pem") + unsafe },
        { elsewhere.as("sorrel"), "The server's certificate is not for localhost" + unsafe },
        { changed(&RemoteServer::port, std::stoi(closed)), "No server answers at localhost, port " + closed + "." },
        { changed(&RemoteServer::host, QStringLiteral("no-such-computer.invalid")),
            "There is no computer named no-such-computer.invalid." },
        { changed(&RemoteServer::certificateFile, file("none.pem")),
            path("none.pem") + " cannot be read: No such file or directory." },
        { changed(&RemoteServer::certificateFile, file("sorrel.key")),
            "There is no certificate in " + path("sorrel.key") + "." },
        { changed(&RemoteServer::keyFile, file("sorrel.pem")),
            "There is no private key in " + path("sorrel.pem") + ", or a pass phrase protects it." },
        { changed(&RemoteServer::keyFile, file("bare.key")),
            "The private key in " + path("bare.key") + " does not match the certificate in " + path("sorrel.pem")
                + "." },
    };
    for (const auto& [server, reason] : servers)
        expectRefused(server, reason);
    expectRefused(changed(&RemoteServer::port, int { silent.serverPort() }),
        "The server localhost did not answer within 0.3 seconds.", 300);
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

TEST_F(Remote, RevokingTakesEffectWithoutARestart)
{
    EXPECT_EQ(refusal(as("brightwater"), L"BRIGHTWATER,NELL"), "signed on");
    AnySession<TlsTransport> other(as("sorrel"));
    other.session.signOn(L"SORREL,ADA");
    EXPECT_EQ(served->authority({ "-revoke", "brightwater.pem" }), "");
    EXPECT_EQ(served->authority({ "-gencrl", "-out", "new.crl" }), "");
    EXPECT_EQ(served->addRevokedList("new.crl"), "");
    expectRefused(as("brightwater"), Revoked);
    EXPECT_EQ(refusal(as("sorrel")), "signed on");
    EXPECT_EQ(Piece(other.session.callText(L"MEVHOST PATIENT", L"14"), L"^", 2), L"QUIET,IRIS");
    EXPECT_EQ(other.asked(), ""); // other sessions continue
}

TEST_F(Remote, ListsOfRevokedCertificatesThatWouldShutEverybodyOut)
{
    ServedRemotely server;
    const auto refused = [&](const QString& list, const QStringList& made, const std::string& reason) {
        EXPECT_EQ(server.authority(made + QStringList { "-gencrl", "-out", list }), "");
        EXPECT_EQ(server.addRevokedList(list), "add-revoked-list: " + text(list) + reason);
    };
    refused("old.crl", { "-crl_lastupdate", "20200101000000Z", "-crl_nextupdate", "20200201000000Z" },
        " expired on Feb  1 00:00:00 2020 GMT.");
    refused("foreign.crl", { "-config", "foreign-authority.cnf" },
        " is not a list of revoked certificates from the authority in ./authority.pem.");
    refused("future.crl", { "-crl_lastupdate", "20990101000000Z", "-crl_nextupdate", "20990201000000Z" },
        " is not valid before Jan  1 00:00:00 2099 GMT: the clock of the authority's machine, or this one's, is "
        "wrong.");
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
    expectRefused(
        server.as("sorrel"), "The server's list of revoked certificates is out of date. Contact its administrator.");
    expectRefused(server.as("expired"), "The server refused your certificate: it has expired.");
}

TEST_F(Remote, IntermediateAuthority)
{
    const ServedRemotely server("server", { "two-step" });
    EXPECT_EQ(refusal(server.as("sorrel")), "signed on");
    expectRefused(server.as("revoked"), Revoked);
    // The root revokes the issuing authority, and with it all its users.
    EXPECT_EQ(server.authority({ "-config", "root.cnf", "-revoke", "authority.pem" }), "");
    EXPECT_EQ(server.authority({ "-config", "root.cnf", "-gencrl", "-out", "new.crl" }), "");
    EXPECT_EQ(server.addRevokedList("new.crl", { "sorrel.pem" }), "");
    expectRefused(server.as("sorrel"), Revoked);
}

// Every other connection comes from another address; every third one begins to speak TLS.
int connectTo(int port, unsigned number)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK + number % 2);
    ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<uint16_t>(port));
    ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
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
    std::atomic<unsigned> opened = 0;
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
    AnySession<TlsTransport> remote(as("sorrel"));
    remote.session.signOn(L"SORREL,ADA");
    const EventNames changes(remote.session, { L"VXR.12" });
    const EventNames refresh(remote.session, { L"REFRESH" });
    const auto arrived = [](const EventNames& events, TextView name) {
        return QTest::qWaitFor([&] { return !events.names.empty(); }) && events.names == Transcript { Text(name) };
    };
    const auto killSessions = [] {
        for (const pid_t process : served->sessions())
            ::kill(process, SIGKILL);
    };
    const auto call = [&] { return Piece(remote.session.callText(L"MEVHOST PATIENT", L"14"), L"^", 2); };
    call(); // after its answer the server knows the subscriptions
    killSessions(); // while the session is idle: it reconnects silently
    EXPECT_TRUE(arrived(refresh, L"REFRESH"));
    EXPECT_EQ(call(), L"QUIET,IRIS");
    notify("VXR.12.REF");
    EXPECT_TRUE(arrived(changes, L"VXR.12.REF"));
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
