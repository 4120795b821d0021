#include "host/ComponentLoader.h"
#include "host/DisplayText.h"
#include "host/MainWindow.h"
#include "host/Tour.h"

#include <QApplication>
#include <QMessageBox>

#include <algorithm>
#include <cstdio>
#include <string_view>

using namespace health;

namespace {

// Prints and saves what the options ask for; 0 when all went well.
int report(MainWindow& window, const Options& options)
{
    QApplication::processEvents();
    if (!options.tour.isEmpty()) {
        const int pictures = Tour(window, options.tour).run();
        if (pictures < 0)
            std::fprintf(stderr, "The pictures cannot be saved in %s.\n", qPrintable(options.tour));
        else
            std::printf("%d pictures saved.\n", pictures);
        return pictures < 0 ? 1 : 0;
    }
    if (options.list) {
        const PatientData& patient = window.context().patient();
        if (patient.number != 0)
            std::printf("%s (%ld)\n", qUtf8Printable(displayName(patient.name)), patient.number);
        std::fputs(qUtf8Printable(window.gridText()), stdout);
    }
    if (!options.picture.isEmpty() && !window.grab().save(options.picture)) {
        std::fprintf(stderr, "The picture cannot be saved in %s.\n", qPrintable(options.picture));
        return 1;
    }
    return 0;
}

int runWindow(const Options& options)
{
    MainWindow window(options);
    try {
        if (!window.start())
            return 0;
    } catch (const Failure& failure) {
        const QString text = QString::fromStdWString(failure.description());
        if (options.isUnattended())
            std::fprintf(stderr, "%s\n", qPrintable(text));
        else
            QMessageBox::critical(nullptr, QStringLiteral("Personal Health"), text);
        return 1;
    }
    window.show();
    return options.isUnattended() ? report(window, options) : QApplication::exec();
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
        return argument.starts_with("--register") || argument.starts_with("--unregister") || argument == "--help"
            || argument == "--version";
    });
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
    return registers ? registration(options) : runWindow(options);
}

}

int main(int argc, char** argv)
{
    return needsNoDisplay(argc, argv) ? run<QCoreApplication>(argc, argv) : run<QApplication>(argc, argv);
}
