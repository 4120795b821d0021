// From a change of the patient to the painted grid, against the real server: time at the server (the calls), in the
// logic and in painting. And what painting costs with many rows.
#include "bench/Median.h"
#include "control/kalmevRepHistCtrl.h"
#include "host/HostSession.h"
#include "host/ProcessTransport.h"
#include "qt/PanelView.h"
#include "qt/QtDesktop.h"
#include "tests/support/ScriptedHost.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QTemporaryDir>

#include <cstdio>
#include <numeric>

using namespace health;

namespace {

constexpr int Rounds = 15;

double milliseconds(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) / 1e6; }

// Passes calls on to the real session and adds up how long they took.
class TimedSession : public test::ScriptedSession {
public:
    TimedSession(test::Transcript& transcript, HostSession& session)
        : ScriptedSession(transcript)
        , m_session(session)
    {
    }
    double spent = 0; // milliseconds

    Text callText(TextView name, TextView parameter) override { return timed(name, parameter); }
    Text callList(TextView name, TextView parameter) override { return timed(name, parameter); }

private:
    Text timed(TextView name, TextView parameter)
    {
        QElapsedTimer timer;
        timer.start();
        Text reply = m_session.callText(name, parameter);
        spent += milliseconds(timer);
        return reply;
    }

    HostSession& m_session;
};

void paint(QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    widget.render(&image);
}

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    ProcessTransport transport(
        QStringLiteral(SERVER_PROGRAM), { QStringLiteral("--data"), folder.filePath(QStringLiteral("data")) });
    HostSession session(transport, 60000, [](const QString&) { return false; });
    session.signOn(L"SORREL,ADA");

    test::ScriptedHost host;
    auto timed = std::make_shared<TimedSession>(host.transcript, session);
    timed->objects = host.session->objects;
    host.session = timed;
    QtDesktop desktop;
    modShared shared(desktop);
    kalmevRepHistCtrl control(shared, host);
    control.UserControl_Initialize();
    PanelView view(control, desktop);
    view.resize(1000, 700);
    view.show();
    QApplication::processEvents();

    std::printf("Patient change to painted grid, median of %d, milliseconds\n", Rounds);
    std::printf("%8s %8s %8s %8s %8s\n", "records", "server", "logic", "paint", "all");
    for (const long patient : { 13L, 19L, 15L }) {
        std::vector<double> server, logic, painting, all;
        for (int round = 0; round < Rounds; ++round) {
            host.patient->patientNumber = 14; // one without records in between
            control.patientEvents().Committed();
            host.patient->patientNumber = patient;
            host.patient->patientSex = L"M";
            host.transcript.clear();
            timed->spent = 0;
            QElapsedTimer timer;
            timer.start();
            control.patientEvents().Committed();
            const double loaded = milliseconds(timer);
            paint(view);
            const double painted = milliseconds(timer);
            server.push_back(timed->spent);
            logic.push_back(loaded - timed->spent);
            painting.push_back(painted - loaded);
            all.push_back(painted);
        }
        std::printf("%8d %8.2f %8.2f %8.2f %8.2f\n", control.fgData.rowCount(), median(server), median(logic),
            median(painting), median(all));
    }

    std::printf("\nPainting a loaded grid, median of %d, milliseconds\n", Rounds);
    for (const int rows : { 100, 10000 }) {
        control.fgData.setDrawing(false);
        control.fgData.setRowCount(rows);
        for (int row = 0; row < rows; ++row) {
            control.fgData.setText(row, 0, L"Functional Status");
            control.fgData.setText(row, 1, Text(40, L'x') + L" " + Text(120, L'y') + L" " + std::to_wstring(row));
        }
        control.fgData.setDrawing(true);
        std::vector<double> times;
        for (int round = 0; round < Rounds; ++round) {
            QElapsedTimer timer;
            timer.start();
            paint(view);
            times.push_back(milliseconds(timer));
        }
        std::printf("%8d rows %8.2f\n", rows, median(times));
    }
    return 0;
}
