// Saves pictures of all windows: health_tour [--palette light|dark|contrast] [--text PERCENT] FOLDER DATA
// SERVER-PROGRAM [USER]. tools/tour builds and runs it.
#include "api/Failure.h"
#include "host/tour/Tour.h"
#include "host/windows/MainWindow.h"

#include <QApplication>
#include <QCommandLineParser>

#include <algorithm>
#include <cstdio>

using namespace health;
using namespace Qt::StringLiterals;

namespace {

// A dark desktop, or one of high contrast, in which windows and fields have the same colour.
QPalette paletteOf(const QString& name)
{
    if (name == u"dark")
        return QPalette(QColor(0x3A, 0x3D, 0x41), QColor(0x2B, 0x2D, 0x30));
    if (name != u"contrast")
        return QApplication::palette();
    QPalette palette(Qt::black, Qt::black);
    for (const QPalette::ColorRole role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
        palette.setColor(role, Qt::white);
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Highlight, Qt::yellow);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

void adaptDesktop(const QCommandLineParser& line)
{
    QApplication::setPalette(paletteOf(line.value(u"palette"_s)));
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * std::clamp(line.value(u"text"_s).toInt(), 50, 300) / 100);
    QApplication::setFont(font);
}

int run(const QStringList& arguments)
{
    WindowOptions options;
    options.isUnattended = true;
    options.user = arguments.value(3);
    options.dataFolder = arguments[1];
    options.serverProgram = arguments[2];
    options.timeoutMilliseconds = 90'000;
    MainWindow window(options);
    if (!window.start())
        throw Failure(L"The server has no users.");
    if (!window.panelFailure().isEmpty())
        throw Failure(window.panelFailure().toStdWString());
    window.show();
    QApplication::processEvents();
    const int pictures = Tour(window, arguments[0]).run();
    if (pictures < 0)
        throw Failure(L"The pictures cannot be saved in " + arguments[0].toStdWString() + L".");
    std::printf("%d pictures saved.\n", pictures);
    return 0;
}

}

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QCommandLineParser line;
    line.addOptions({ { u"palette"_s, u"light, dark or contrast"_s, u"name"_s },
        { u"text"_s, u"size of the text"_s, u"percent"_s, u"100"_s } });
    if (!line.parse(QApplication::arguments()) || line.positionalArguments().size() < 3) {
        std::fputs("Usage: health_tour [--palette light|dark|contrast] [--text PERCENT] FOLDER DATA SERVER-PROGRAM "
                   "[USER]\n",
            stderr);
        return 2;
    }
    adaptDesktop(line);
    try {
        return run(line.positionalArguments());
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
