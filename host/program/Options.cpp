#include "host/program/Options.h"

#include "toolkit/PrivateSave.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <cstdio>
#include <string_view>

using namespace Qt::StringLiterals;

namespace health {

namespace {

// Longer than a server may take to recover the journal after another one was killed.
constexpr double DefaultTimeout = 90; // seconds
constexpr double DefaultLongestCall = 600; // seconds

QString defaultDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/personal-health/data"_s;
}

// Next to the program in the build tree, or where it is installed.
QString defaultServerProgram()
{
    const QString folder = QCoreApplication::applicationDirPath();
    for (const char* place : { "/../server/phserver", "/../lib/personal-health/phserver" }) {
        const QFileInfo file(folder + QLatin1String(place));
        if (file.isExecutable())
            return file.canonicalFilePath();
    }
    return folder + u"/../server/phserver"_s;
}

[[noreturn]] void refuse(const QString& text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    std::exit(2);
}

// The values of the command line, by option.
struct Arguments {
    QString patient;
    QString user;
    QString picture;
    QString list;
    QString fhir;
    QString data;
    QString serverProgram;
    QString server;
    QString certificate;
    QString key;
    QString authority;
    QString timeout;
    QString longestCall;
    QString laboratory;
    QString registerLibrary;
    QString unregisterLibrary;
};

struct Option {
    const char* name;
    const char* help;
    const char* placeholder; // null: the option takes no value
    QString Arguments::*member;
};

constexpr Option Table[] = {
    { "patient", "Select the patient with number N.", "N", &Arguments::patient },
    { "user", "Sign on as NAME, as in \"SORREL,ADA\".", "NAME", &Arguments::user },
    { "picture", "Save a picture of the loaded window in FILE and exit.", "FILE", &Arguments::picture },
    { "list", "Print the grid as text and exit.", nullptr, &Arguments::list },
    { "fhir", "Export the list as FHIR to FILE and exit.", "FILE", &Arguments::fhir },
    { "data", "Keep the local server's data in FOLDER.", "FOLDER", &Arguments::data },
    { "server-program", "Start this local server.", "PATH", &Arguments::serverProgram },
    { "server", "Use the remote server at ADDRESS, as in tls://host:port.", "ADDRESS", &Arguments::server },
    { "certificate", "Present the user's certificate in FILE (PEM) to the remote server.", "FILE",
        &Arguments::certificate },
    { "key", "Read the certificate's private key from FILE if it is not in the certificate's file.", "FILE",
        &Arguments::key },
    { "authority", "Trust the remote server if the authority in FILE (PEM) has issued its certificate.", "FILE",
        &Arguments::authority },
    { "timeout", "Wait at most SECONDS for a silent server.", "SECONDS", &Arguments::timeout },
    { "longest-call", "Abandon a call after SECONDS, even while the server keeps sending.", "SECONDS",
        &Arguments::longestCall },
    { "laboratory", "Offer to disturb the connection, for tests and support; local sample data only.", nullptr,
        &Arguments::laboratory },
    { "register", "Register the component in LIBRARY and exit.", "LIBRARY", &Arguments::registerLibrary },
    { "unregister", "Unregister the component in LIBRARY and exit.", "LIBRARY", &Arguments::unregisterLibrary },
};

// The values that options have without being set; the help shows them.
Arguments defaults()
{
    Arguments arguments;
    arguments.data = defaultDataFolder();
    arguments.serverProgram = defaultServerProgram();
    arguments.timeout = QString::number(DefaultTimeout);
    arguments.longestCall = QString::number(DefaultLongestCall);
    return arguments;
}

void addOptions(QCommandLineParser& parser)
{
    const Arguments usual = defaults();
    for (const auto& [name, help, placeholder, member] : Table) {
        QCommandLineOption option(QString::fromLatin1(name), QString::fromLatin1(help));
        option.setValueName(QString::fromLatin1(placeholder));
        if (!(usual.*member).isEmpty())
            option.setDefaultValue(usual.*member);
        parser.addOption(option);
    }
}

Arguments readArguments(const QCommandLineParser& parser)
{
    Arguments arguments;
    for (const auto& [name, help, placeholder, member] : Table) {
        const QString option = QString::fromLatin1(name);
        arguments.*member = parser.value(option);
        // For instance from an unset variable of a script.
        if (placeholder && parser.isSet(option) && parser.value(option).isEmpty())
            refuse(u"--%1 requires a value."_s.arg(option));
    }
    return arguments;
}

// Before the server is started.
void checkFhir(const Arguments& arguments)
{
    if (arguments.patient.isEmpty())
        refuse(u"--fhir requires --patient."_s);
    if (const QString fault = pathFault(arguments.fhir); !fault.isEmpty())
        refuse(fault);
}

long readPatient(const QString& value)
{
    bool valid = true;
    const long patient = value.isEmpty() ? 0 : value.toLong(&valid);
    if (!valid || patient < 0)
        refuse(u"--patient takes a patient's number."_s);
    return patient;
}

int readMilliseconds(const QString& option, const QString& value)
{
    bool valid = true;
    const double seconds = value.toDouble(&valid);
    if (!valid || !(seconds > 0 && seconds <= 86400))
        refuse(u"--%1 takes a number of seconds."_s.arg(option));
    return static_cast<int>(seconds * 1000);
}

std::optional<RemoteServer> readServer(const Arguments& arguments)
{
    if (arguments.server.isEmpty()) {
        if (!arguments.certificate.isEmpty() || !arguments.key.isEmpty() || !arguments.authority.isEmpty())
            refuse(u"--certificate, --key and --authority require --server."_s);
        return {};
    }
    const QUrl url(arguments.server, QUrl::StrictMode);
    if (url.scheme() != u"tls" || url.host().isEmpty() || url.port() <= 0 || !url.path().isEmpty())
        refuse(u"--server takes an address such as tls://host:port."_s);
    if (arguments.authority.isEmpty())
        refuse(u"--server requires --authority: the file of the authority that has issued the server's certificate."_s);
    const QString key = arguments.key.isEmpty() ? arguments.certificate : arguments.key;
    return RemoteServer { url.host(), url.port(), arguments.certificate, key, arguments.authority };
}

}

Options readOptions()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Shows the Personal Health panel for patients of a clinical server."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    addOptions(parser);
    parser.process(*QCoreApplication::instance());
    if (!parser.positionalArguments().isEmpty())
        refuse(u"Unknown option: %1."_s.arg(parser.positionalArguments().first()));
    const Arguments arguments = readArguments(parser);
    if (!arguments.picture.isEmpty() && !arguments.server.isEmpty())
        refuse(u"--picture cannot be combined with --server: pictures are for the sample data."_s);

    if (parser.isSet(u"laboratory"_s) && !arguments.server.isEmpty())
        refuse(u"--laboratory cannot be combined with --server: it is for the sample data of a local server."_s);
    if (!arguments.fhir.isEmpty())
        checkFhir(arguments);

    Options options;
    options.patient = readPatient(arguments.patient);
    options.timeoutMilliseconds = readMilliseconds(u"timeout"_s, arguments.timeout);
    options.longestCallMilliseconds = readMilliseconds(u"longest-call"_s, arguments.longestCall);
    options.user = arguments.user;
    options.picture = arguments.picture;
    options.list = parser.isSet(u"list"_s);
    options.fhir = arguments.fhir;
    options.dataFolder = QFileInfo(arguments.data).absoluteFilePath();
    options.server = readServer(arguments);
    options.serverProgram = arguments.serverProgram;
    options.registerLibrary = arguments.registerLibrary;
    options.unregisterLibrary = arguments.unregisterLibrary;
    options.isLaboratory = parser.isSet(u"laboratory"_s);
    options.isUnattended = options.list || !options.picture.isEmpty() || !options.fhir.isEmpty();
    return options;
}

bool worksWithoutWindow(int argc, char** argv)
{
    const auto isGiven = [&](std::string_view option) {
        return std::any_of(argv, argv + argc, [&](std::string_view argument) { return argument.starts_with(option); });
    };
    return (isGiven("--fhir") || isGiven("--list")) && !isGiven("--picture");
}

bool needsDisplay(int argc, char** argv)
{
    return std::none_of(argv, argv + argc, [](std::string_view argument) {
        return argument.starts_with("--register") || argument.starts_with("--unregister")
            || argument.starts_with("--help") || argument == "--version" || argument == "-h" || argument == "-v";
    });
}

}
