// From a change of the patient to the painted grid on the real server: time in the server's calls, in the logic and in
// painting; then the cost of painting many rows.
#include "bench/Median.h"
#include "bench/ShownPanel.h"
#include "host/session/HostSession.h"
#include "host/session/ProcessTransport.h"
#include "tests/support/ScriptedHost.h"

#include <QTemporaryDir>

#include <cstdio>
#include <numeric>

using namespace health;

namespace {

constexpr int Rounds = 15;

// Passes calls on to the real session and sums their times.
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
        Text reply;
        spent += milliseconds([&] { reply = m_session.callText(name, parameter); });
        return reply;
    }

    HostSession& m_session;
};

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
    ShownPanel panel(host);
    kalmevRepHistCtrl& control = panel.control;

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
            const double loaded = milliseconds([&] { control.patientEvents().Committed(); });
            const double painted = milliseconds([&] { panel.paint(); });
            server.push_back(timed->spent);
            logic.push_back(loaded - timed->spent);
            painting.push_back(painted);
            all.push_back(loaded + painted);
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
        for (int round = 0; round < Rounds; ++round)
            times.push_back(milliseconds([&] { panel.paint(); }));
        std::printf("%8d rows %8.2f\n", rows, median(times));
    }
    return 0;
}
