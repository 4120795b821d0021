#include "host/desktop/PrivateFile.h"
#include "host/framework/ComponentLoader.h"
#include "host/framework/DisplayText.h"
#include "host/program/Options.h"
#include "host/program/UnattendedDialogs.h"
#include "host/windows/FailureBox.h"
#include "host/windows/MainWindow.h"
#include "toolkit/PrivateSave.h"

#include <QApplication>

#include <sys/prctl.h>
#include <sys/resource.h>

#include <cstdio>

using namespace health;
using namespace Qt::StringLiterals;

namespace {

// Exports the list of the first panel. Throws Failure.
void exportFhir(MainWindow& window, const QString& path)
{
    const auto files = window.firstPanel()->exportRecords(ExportFormat::Fhir);
    if (files.empty())
        throw Failure(L"Nothing was exported: the list shows no patient.");
    if (const QString fault = savePrivately(path, files.front().bytes); !fault.isEmpty())
        throw Failure(fault.toStdWString());
}

// Prints, exports and saves what the options ask for; false on failure. Throws Failure.
bool report(MainWindow& window, const Options& options)
{
    if (options.list) {
        const PatientData& patient = window.context().patient();
        if (patient.number == 0)
            std::puts("No patient selected");
        else
            std::printf("%s (%ld)\n", qUtf8Printable(displayName(patient.name)), patient.number);
        std::fputs(qUtf8Printable(window.gridText()), stdout);
    }
    if (!options.fhir.isEmpty())
        exportFhir(window, options.fhir);
    if (options.picture.isEmpty() || (makePrivate(options.picture) && window.grab().save(options.picture)))
        return true;
    std::fprintf(stderr, "The picture cannot be saved in %s.\n", qPrintable(options.picture));
    return false;
}

int runUnattended(const Options& options)
{
    UnattendedDialogs dialogs;
    QApplication::instance()->installEventFilter(&dialogs);
    MainWindow window(options);
    try {
        if (!window.start())
            throw Failure(L"The server has no users.");
    } catch (const CallAbandoned&) {
        return 1; // the window has printed why
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    if (!window.panelFailure().isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(window.panelFailure()));
        return 1; // there are no rows
    }
    window.show();
    QApplication::processEvents();
    bool reported = false;
    try {
        reported = report(window, options);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
    }
    return reported && !dialogs.hasSeenOne() ? 0 : 1;
}

int runAttended(const Options& options)
{
    MainWindow window(options);
    try {
        if (!window.start())
            return 0;
    } catch (const CallAbandoned&) {
        return 1; // the user has seen why
    } catch (const Failure& failure) {
        showFailure(nullptr, u"Personal Health"_s, QString::fromStdWString(failure.description()));
        return 1;
    }
    window.show();
    return QApplication::exec();
}

int registration(const Options& options)
{
    try {
        if (!options.registerLibrary.isEmpty())
            registerComponent(options.registerLibrary);
        else
            unregisterComponent(options.unregisterLibrary);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    std::puts(options.registerLibrary.isEmpty() ? "Unregistered." : "Registered.");
    return 0;
}

// The memory contains patient data. The limit keeps the kernel from writing it to a core file. A program that the
// kernel pipes core dumps to may ignore the limit, so the process is also marked as not dumpable; then no other program
// of the user can read its memory either.
void preventDumps()
{
    constexpr rlimit none {};
    ::setrlimit(RLIMIT_CORE, &none);
    ::prctl(PR_SET_DUMPABLE, 0);
}

template<typename Application>
int run(int argc, char** argv)
{
    Application application(argc, argv);
    Application::setApplicationName(u"personal-health-host"_s);
    Application::setOrganizationName(u"personal-health"_s);
    Application::setApplicationVersion(QLatin1String(HOST_VERSION));
    const Options options = readOptions();
    if (options.registers())
        return registration(options);
    return options.isUnattended ? runUnattended(options) : runAttended(options);
}

}

int main(int argc, char** argv)
{
    preventDumps();
    if (worksWithoutWindow(argc, argv) && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return needsDisplay(argc, argv) ? run<QApplication>(argc, argv) : run<QCoreApplication>(argc, argv);
}
