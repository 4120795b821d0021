// The details of an asthma record with its course: from another selection, and from a reload, to the painted pane.
#include "bench/Median.h"
#include "bench/ShownPanel.h"
#include "qt/DetailsPane.h"
#include "tests/support/ScriptedHost.h"

#include <cstdio>

using namespace health;

namespace {

constexpr int Rounds = 31;

// Asthma records of ten years, the latest first.
Text records(int count)
{
    constexpr TextView severities[] = { L"MILD INTERMITTENT|1", L"MILD PERSISTENT|2", L"MODERATE PERSISTENT|3",
        L"SEVERE PERSISTENT|4" };
    Text reply;
    for (int i = count - 1; i >= 0; --i) {
        const int day = i * 3600 / count; // of years with 12 months of 30 days
        const long date = (316 + day / 360) * 10000L + (day / 30 % 12 + 1) * 100 + std::min(day % 30 + 1, 28);
        reply += std::to_wstring(i + 1) + L"^^" + std::to_wstring(date) + L".0815|81^" + Text(severities[i / 40 % 4])
            + L"^" + std::to_wstring(60 + i * 7 % 40) + L"^" + std::to_wstring(40 + i * 11 % 50) + L"^"
            + std::to_wstring(300 + i * 13 % 150) + L"^YES^NO^YES^NO\r\n";
    }
    return reply;
}

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    test::ScriptedHost host;
    host.patient->patientNumber = 12;
    std::printf("Details to painted pane, median of %d, milliseconds\n", Rounds);
    std::printf("%8s %10s %10s\n", "records", "selection", "reload");
    for (const int count : { 8, 100, 500 }) {
        host.session->reply(L"MEVVAST GET", records(count));
        ShownPanel panel(host);
        auto& pane = *panel.view->findChild<DetailsPane*>();
        const auto paint = [&] {
            QApplication::processEvents();
            QImage image(pane.size(), QImage::Format_ARGB32_Premultiplied);
            pane.render(&image);
        };
        std::vector<double> selection, reload;
        for (int round = 0; round < Rounds; ++round) {
            panel.control.fgData.choose(round % count);
            selection.push_back(milliseconds(paint)); // the list has followed; the pane follows in the event loop
            panel.control.LoadGrid();
            panel.control.fgData.choose(round % count);
            reload.push_back(milliseconds(paint));
        }
        std::printf("%8d %10.2f %10.2f\n", count, median(selection), median(reload));
        if (argc > 1) // for looking at it
            panel.view->grab().save(QString::fromLocal8Bit(argv[1]).arg(count));
    }
    return 0;
}
