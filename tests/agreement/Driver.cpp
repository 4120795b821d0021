// Drives every form, the lookups and two panels through their real widgets by random actions of a user, on a session
// with the real server, until window and form, or screen and stored record, disagree.
//
//   agreement [--actions N] [--seed N]
//
// Each seed plays one scene. A failure prints the seed and its actions; --actions 1 with that seed plays them again.
#include "tests/agreement/Scenes.h"
#include "tests/support/OwnHome.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

int main(int argc, char** argv)
{
    const health::test::OwnHome home;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser options;
    options.addHelpOption();
    options.addOptions(
        { { "seed", "Begin with this seed.", "N", "1" }, { "actions", "Do this many actions.", "N", "4000" } });
    options.process(application);
    health::test::Scenes scenes;
    qsizetype done = 0;
    for (unsigned seed = options.value("seed").toUInt(); done < options.value("actions").toLongLong(); ++seed) {
        const health::test::Episode episode = scenes.play(seed);
        done += episode.actions.size();
        if (episode.failure.isEmpty())
            continue;
        std::printf("%s\nSeed %u: %s\n", qPrintable(episode.actions.join(u'\n')), seed, qPrintable(episode.failure));
        return 1;
    }
    std::printf(
        "%lld actions, %d saves seen again, no disagreement.\n", static_cast<long long>(done), scenes.savesSeen());
    return 0;
}
