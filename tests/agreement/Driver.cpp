// Drives every form, the lookups and two panels through their real widgets by random actions of a user, on a session
// with the real server, until window and form, or screen and stored record, disagree.
//
//   agreement [--seed N] [--actions N] [--scene NAME] [--replay FILE]
//
// A failure prints the shortest list of actions that still fails; --replay plays such a list.
#include "tests/agreement/Scenes.h"
#include "tests/support/OwnHome.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>

namespace health::test {
namespace {

constexpr int EpisodeActions = 60;
constexpr int ShrinkingSeconds = 40;

// Removes actions, fewer at a time, as long as the rest still fails.
QStringList shortest(Scenes& scenes, const QString& scene, QStringList actions)
{
    QElapsedTimer clock;
    clock.start();
    for (qsizetype size = actions.size() / 2; size >= 1; size /= 2) {
        for (qsizetype at = 0; at < actions.size() && clock.elapsed() < ShrinkingSeconds * 1000;) {
            const QStringList fewer = actions.mid(0, at) + actions.mid(at + size);
            if (scenes.replay(scene, fewer).failure.isEmpty())
                at += size;
            else
                actions = fewer;
        }
    }
    return actions;
}

int report(Scenes& scenes, const QString& scene, unsigned seed, const Episode& episode)
{
    std::printf("%s, seed %u: %s\n", qPrintable(scene), seed, qPrintable(episode.failure));
    const QStringList actions = shortest(scenes, scene, episode.actions);
    const Episode again = scenes.replay(scene, actions);
    std::printf(
        "The shortest list that still fails (%s):\n%s\n", qPrintable(again.failure), qPrintable(actions.join(u'\n')));
    return 1;
}

int replayFile(Scenes& scenes, const QString& scene, const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        std::printf("%s cannot be read.\n", qPrintable(name));
        return 2;
    }
    const QStringList actions = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    scenes.traces = true;
    const Episode episode = scenes.replay(scene, actions);
    std::printf("%s\n", episode.failure.isEmpty() ? "No disagreement." : qPrintable(episode.failure));
    return episode.failure.isEmpty() ? 0 : 1;
}

int drive(const QCommandLineParser& options)
{
    Scenes scenes;
    const QString only = options.value("scene");
    if (options.isSet("replay"))
        return replayFile(scenes, only, options.value("replay"));
    const long long wanted = options.value("actions").toLongLong();
    unsigned seed = options.value("seed").toUInt();
    long long done = 0;
    QElapsedTimer clock;
    clock.start();
    const QStringList names = only.isEmpty() ? scenes.names() : QStringList { only };
    for (; done < wanted; ++seed) {
        const QString scene = names[static_cast<int>(seed % static_cast<unsigned>(names.size()))];
        const Episode episode = scenes.explore(scene, seed, EpisodeActions);
        done += episode.actions.size();
        if (!episode.failure.isEmpty())
            return report(scenes, scene, seed, episode);
    }
    std::printf("%lld actions, %d saves seen again, no disagreement, %.0f actions a second.\n", done,
        scenes.savesSeen(),
        static_cast<double>(done) * 1000 / static_cast<double>(std::max<qint64>(1, clock.elapsed())));
    return 0;
}

}
}

int main(int argc, char** argv)
{
    const health::test::OwnHome home;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser options;
    options.addHelpOption();
    options.addOptions(
        { { "seed", "Begin with this seed.", "N", "1" }, { "actions", "Do this many actions.", "N", "4000" },
            { "scene", "Drive one scene alone.", "NAME" }, { "replay", "Play the actions in FILE.", "FILE" } });
    options.process(application);
    return health::test::drive(options);
}
