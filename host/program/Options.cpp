#include "host/program/Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

#include <cstdio>

namespace health {

namespace {

// Longer than a server may have to wait for the journal of one that was killed.
constexpr double DefaultTimeout = 90; // seconds
constexpr double DefaultLongestCall = 600; // seconds

QString defaultDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/personal-health/data");
}

// Beside the program in the build tree, or where it is installed.
QString defaultServerProgram()
{
    const QString folder = QCoreApplication::applicationDirPath();
    for (const char* place : { "/../server/phserver", "/../lib/personal-health/phserver" }) {
        const QFileInfo file(folder + QLatin1String(place));
        if (file.isExecutable())
            return file.canonicalFilePath();
    }
    return folder + QStringLiteral("/../server/phserver");
}

[[noreturn]] void refuse(const QString& text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    std::exit(2);
}

// The milliseconds that an option of seconds gives.
int readSeconds(const QCommandLineParser& parser, const QString& option)
{
    bool understood = true;
    const double seconds = parser.value(option).toDouble(&understood);
    if (!understood || !(seconds > 0 && seconds <= 86400))
        refuse(QStringLiteral("--%1 takes a number of seconds.").arg(option));
    return static_cast<int>(seconds * 1000);
}

// The remote server that the options name, if any.
RemoteServer readServer(const QCommandLineParser& parser)
{
    RemoteServer server;
    server.certificateFile = parser.value(QStringLiteral("certificate"));
    server.keyFile = parser.value(QStringLiteral("key"));
    server.authorityFile = parser.value(QStringLiteral("authority"));
    const QString address = parser.value(QStringLiteral("server"));
    if (!parser.isSet(QStringLiteral("server"))) {
        if (!server.certificateFile.isEmpty() || !server.keyFile.isEmpty() || !server.authorityFile.isEmpty())
            refuse(QStringLiteral("--certificate, --key and --authority go with --server."));
        return server;
    }
    const QUrl url(address, QUrl::StrictMode);
    if (url.scheme() != u"tls" || url.host().isEmpty() || url.port() <= 0 || !url.path().isEmpty())
        refuse(QStringLiteral("--server takes an address such as tls://host:port."));
    if (server.authorityFile.isEmpty())
        refuse(QStringLiteral("--server needs --authority: the file of the authority that the server is trusted by."));
    server.host = url.host();
    server.port = url.port();
    if (server.keyFile.isEmpty())
        server.keyFile = server.certificateFile;
    return server;
}

}

Options readOptions()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the Personal Health panel for patients of a clinical server."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        { QStringLiteral("patient"), QStringLiteral("Select the patient with number N."), QStringLiteral("N") },
        { QStringLiteral("user"), QStringLiteral("Sign on as NAME, as in \"SORREL,ADA\"."), QStringLiteral("NAME") },
        { QStringLiteral("picture"), QStringLiteral("Save a picture of the loaded window in FILE and end."),
            QStringLiteral("FILE") },
        { QStringLiteral("tour"), QStringLiteral("Save pictures of all windows in FOLDER and end."),
            QStringLiteral("FOLDER") },
        { QStringLiteral("list"), QStringLiteral("Print the grid as text and end.") },
        { QStringLiteral("data"), QStringLiteral("Keep the local server's data in FOLDER."), QStringLiteral("FOLDER"),
            defaultDataFolder() },
        { QStringLiteral("server-program"), QStringLiteral("Start this local server."), QStringLiteral("PATH"),
            defaultServerProgram() },
        { QStringLiteral("server"), QStringLiteral("Use the remote server at ADDRESS, as in tls://host:port."),
            QStringLiteral("ADDRESS") },
        { QStringLiteral("certificate"), QStringLiteral("Show the remote server the user's certificate in FILE (PEM)."),
            QStringLiteral("FILE") },
        { QStringLiteral("key"),
            QStringLiteral("The certificate's private key is in FILE, if it is not in the certificate's."),
            QStringLiteral("FILE") },
        { QStringLiteral("authority"),
            QStringLiteral("Trust the remote server if its certificate is from the authority in FILE (PEM)."),
            QStringLiteral("FILE") },
        { QStringLiteral("timeout"), QStringLiteral("Wait at most SECONDS for a server that says nothing."),
            QStringLiteral("SECONDS"), QString::number(DefaultTimeout) },
        { QStringLiteral("longest-call"), QStringLiteral("Give a call up after SECONDS, whatever the server says."),
            QStringLiteral("SECONDS"), QString::number(DefaultLongestCall) },
        { QStringLiteral("register"), QStringLiteral("Register the component in LIBRARY and end."),
            QStringLiteral("LIBRARY") },
        { QStringLiteral("unregister"), QStringLiteral("Unregister the component in LIBRARY and end."),
            QStringLiteral("LIBRARY") },
    });
    parser.process(*QCoreApplication::instance());
    if (!parser.positionalArguments().isEmpty())
        refuse(QStringLiteral("%1 is no option.").arg(parser.positionalArguments().first()));
    // A variable of a script that was not set, perhaps.
    for (const QString& option : parser.optionNames()) {
        if (option != u"list" && parser.value(option).isEmpty())
            refuse(QStringLiteral("--%1 needs a value.").arg(option));
    }
    if ((parser.isSet(QStringLiteral("tour")) || parser.isSet(QStringLiteral("picture")))
        && parser.isSet(QStringLiteral("server")))
        refuse(QStringLiteral("--picture and --tour do not go with --server: pictures are for the sample data."));

    Options options;
    bool understood = true;
    if (parser.isSet(QStringLiteral("patient")))
        options.patient = parser.value(QStringLiteral("patient")).toLong(&understood);
    if (!understood || options.patient < 0)
        refuse(QStringLiteral("--patient takes a patient's number."));
    options.timeoutMilliseconds = readSeconds(parser, QStringLiteral("timeout"));
    options.longestCallMilliseconds = readSeconds(parser, QStringLiteral("longest-call"));
    options.user = parser.value(QStringLiteral("user"));
    options.picture = parser.value(QStringLiteral("picture"));
    options.tour = parser.value(QStringLiteral("tour"));
    options.list = parser.isSet(QStringLiteral("list"));
    options.dataFolder = QFileInfo(parser.value(QStringLiteral("data"))).absoluteFilePath();
    options.server = readServer(parser);
    options.serverProgram = parser.value(QStringLiteral("server-program"));
    options.registerLibrary = parser.value(QStringLiteral("register"));
    options.unregisterLibrary = parser.value(QStringLiteral("unregister"));
    return options;
}

}
