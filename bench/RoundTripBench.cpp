// From a change of the patient to the painted grid over a line of 0, 20 and 80 ms, with calls sent ahead and one by
// one; then opening the editor that makes most calls.
#include "bench/Median.h"
#include "bench/ShownPanel.h"
#include "editors/frmAsthma.h"
#include "host/framework/ClinicalContext.h"
#include "host/session/DisturbedTransport.h"
#include "host/session/ProcessTransport.h"

#include <QTemporaryDir>

#include <cstdio>

using namespace health;

namespace {

constexpr int Rounds = 9;

void measure(const QString& data, int delay, bool ahead)
{
    DisturbedTransport transport(std::make_unique<ProcessTransport>(
        QStringLiteral(SERVER_PROGRAM), QStringList { QStringLiteral("--data"), data }));
    Disturbances line;
    line.delay = delay;
    transport.disturb(line);
    ClinicalContext context(transport, 60000, [](const QString&) { return false; }, {});
    context.session().usesHints = ahead;
    context.session().signOn(L"ROLLINS,COLE");
    ShownPanel panel(context);
    std::vector<double> changes, openings;
    for (int round = 0; round < Rounds; ++round) {
        for (const long patient : { 14L, 11L }) { // one without records in between
            context.selectPatient(patient);
            const double change = milliseconds([&] {
                panel.control.patientEvents().Committed();
                panel.paint();
            });
            if (patient == 11)
                changes.push_back(change);
        }
        frmAsthma editor(panel.shared);
        editor.m_sIEN = panel.control.fgData.text(0, 2);
        openings.push_back(milliseconds([&] {
            editor.load();
            editor.open();
            editor.Form_Activate();
        }));
    }
    std::printf("%8d %12s %14.1f %16.1f\n", delay, ahead ? "ahead" : "one by one", median(changes), median(openings));
}

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    std::printf(
        "Round trip, calls, patient change to painted grid, asthma editor; medians of %d, milliseconds\n", Rounds);
    for (const int delay : { 0, 20, 80 }) {
        for (const bool ahead : { false, true })
            measure(folder.filePath(QStringLiteral("data")), delay, ahead);
    }
    return 0;
}
