// From a change of the patient to the painted grid over a line of 0, 20 and 80 ms, with calls asked ahead and one by
// one; and the opening of the editor that makes most calls.
#include "bench/DelayedTransport.h"
#include "bench/Median.h"
#include "control/kalmevRepHistCtrl.h"
#include "editors/frmAsthma.h"
#include "host/ClinicalContext.h"
#include "host/ProcessTransport.h"
#include "qt/PanelView.h"
#include "qt/QtDesktop.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QTemporaryDir>

#include <cstdio>

using namespace health;

namespace {

constexpr int Rounds = 9;

template<typename Work>
double milliseconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void measure(const QString& data, int delay, bool ahead)
{
    ProcessTransport process(QStringLiteral(SERVER_PROGRAM), { QStringLiteral("--data"), data });
    DelayedTransport transport(process, delay);
    ClinicalContext context(transport, 60000, [](const QString&) { return false; });
    context.session().usesHints = ahead;
    context.session().signOn(L"ROLLINS,COLE");
    QtDesktop desktop;
    modShared shared(desktop);
    kalmevRepHistCtrl control(shared, context);
    control.UserControl_Initialize();
    PanelView view(control, desktop);
    view.resize(1000, 700);
    view.show();
    QApplication::processEvents();
    std::vector<double> changes, openings;
    for (int round = 0; round < Rounds; ++round) {
        for (const long patient : { 14L, 11L }) { // one without records in between
            context.selectPatient(patient);
            const double change = milliseconds([&] {
                control.patientEvents().Committed();
                QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
                view.render(&image);
            });
            if (patient == 11)
                changes.push_back(change);
        }
        frmAsthma editor(shared);
        editor.m_sIEN = control.fgData.text(0, 2);
        openings.push_back(milliseconds([&] {
            editor.load();
            editor.open();
            editor.Form_Activate();
        }));
    }
    control.UserControl_Terminate();
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
