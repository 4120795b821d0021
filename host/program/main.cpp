#include "host/framework/ComponentLoader.h"
#include "host/program/Tour.h"
#include "host/program/UnattendedDialogs.h"
#include "host/framework/DisplayText.h"
#include "host/windows/FailureBox.h"
#include "host/windows/MainWindow.h"
#include "host/desktop/PrivateFile.h"

#include <QApplication>

#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

using namespace health;

namespace {

// Prints and saves what the options ask for; false when that did not go well.
bool report(MainWindow& window, const Options& options)
{
    if (!options.tour.isEmpty()) {
        const int pictures = Tour(window, options.tour).run();
        if (pictures < 0)
            std::fprintf(stderr, "The pictures cannot be saved in %s.\n", qPrintable(options.tour));
        else
            std::printf("%d pictures saved.\n", pictures);
        return pictures >= 0;
    }
    if (options.list) {
        const PatientData& patient = window.context().patient();
        if (patient.number == 0)
            std::puts("No patient selected");
        else
            std::printf("%s (%ld)\n", qUtf8Printable(displayName(patient.name)), patient.number);
        std::fputs(qUtf8Printable(window.gridText()), stdout);
    }
    if (options.picture.isEmpty() || (makePrivate(options.picture) && window.grab().save(options.picture)))
        return true;
    std::fprintf(stderr, "The picture cannot be saved in %s.\n", qPrintable(options.picture));
    return false;
}

int runUnattended(const Options& options)
{
    UnattendedDialogs dialogs;
    if (options.tour.isEmpty()) // which opens dialogs of its own, and closes them
        QApplication::instance()->installEventFilter(&dialogs);
    MainWindow window(options);
    try {
        if (!window.start())
            throw Failure(L"The server knows no user.");
    } catch (const CallAbandoned&) {
        return 1; // printed where the question would have been asked
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    if (!window.panelFailure().isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(window.panelFailure()));
        return 1; // nothing that could be reported
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
        showFailure(nullptr, QStringLiteral("Personal Health"), QString::fromStdWString(failure.description()));
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

// Registering, as installing does it, needs no display.
bool needsNoDisplay(int argc, char** argv)
{
    return std::any_of(argv, argv + argc, [](std::string_view argument) {
        return argument.starts_with("--register") || argument.starts_with("--unregister")
            || argument.starts_with("--help") || argument == "--version" || argument == "-h" || argument == "-v";
    });
}

// The memory holds what the host has read of patients. The limit keeps the kernel from writing it to a file. A program
// that the kernel hands dumps to may disregard the limit, so the process is marked as not dumpable as well; no other
// program of the user can look into it then.
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
    Application::setApplicationName(QStringLiteral("personal-health-host"));
    Application::setOrganizationName(QStringLiteral("personal-health"));
    Application::setApplicationVersion(QStringLiteral(HOST_VERSION));
    const Options options = readOptions();
    const bool registers = !options.registerLibrary.isEmpty() || !options.unregisterLibrary.isEmpty();
    if (registers)
        return registration(options);
    return options.isUnattended() ? runUnattended(options) : runAttended(options);
}

}

int main(int argc, char** argv)
{
    preventDumps();
    return needsNoDisplay(argc, argv) ? run<QCoreApplication>(argc, argv) : run<QApplication>(argc, argv);
}
