// Saves pictures of all windows: health_tour FOLDER DATA SERVER-PROGRAM [USER]. tools/tour builds and runs it.
#include "api/Failure.h"
#include "host/tour/Tour.h"
#include "host/windows/MainWindow.h"

#include <QApplication>

#include <cstdio>

using namespace health;

namespace {

int run(const QStringList& arguments)
{
    WindowOptions options;
    options.isUnattended = true;
    options.user = arguments.value(4);
    options.dataFolder = arguments[2];
    options.serverProgram = arguments[3];
    options.timeoutMilliseconds = 90'000;
    MainWindow window(options);
    if (!window.start())
        throw Failure(L"The server has no users.");
    if (!window.panelFailure().isEmpty())
        throw Failure(window.panelFailure().toStdWString());
    window.show();
    QApplication::processEvents();
    const int pictures = Tour(window, arguments[1]).run();
    if (pictures < 0)
        throw Failure(L"The pictures cannot be saved in " + arguments[1].toStdWString() + L".");
    std::printf("%d pictures saved.\n", pictures);
    return 0;
}

}

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    if (argc < 4 || argc > 5) {
        std::fputs("Usage: health_tour FOLDER DATA SERVER-PROGRAM [USER]\n", stderr);
        return 2;
    }
    try {
        return run(QApplication::arguments());
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
