// Finding among 5,000 records: from a keystroke or a choice in the bar to the painted list.
#include "bench/Median.h"
#include "bench/ShownPanel.h"
#include "qt/FindBar.h"
#include "tests/support/ScriptedHost.h"

#include <QComboBox>
#include <QLineEdit>

#include <algorithm>
#include <cstdio>

using namespace health;

namespace {

constexpr int Rounds = 15;
constexpr int Records = 5000;

Text numbered(TextView before, int number, TextView after)
{
    return Text(before) + std::to_wstring(number) + Text(after);
}

// Half of the records are functional assessments with long summaries; dates go back to 2010.
void addRecords(test::ScriptedSession& session)
{
    Text assessments;
    Text refusals;
    for (int i = 0; i < Records / 2; ++i) {
        const Text date = std::to_wstring(3260101 - i % 17 * 10000 + i % 12 * 100 + i % 28) + L".0915|81";
        assessments += numbered(L"", i + 1, L"^^") + date
            + L"^INDEPENDENT^NEEDS HELP^TOTALLY DEPENDENT^INDEPENDENT^INDEPENDENT^INDEPENDENT^NEEDS HELP^INDEPENDENT"
              L"^NEEDS HELP^NEEDS HELP^INDEPENDENT^INDEPENDENT^DECLINE^YES\r\n";
        refusals += numbered(L"", i + 1, L"^^^IMMUNIZATION^14^TETANUS-DIPHTHERIA^^^")
            + std::to_wstring(3260101 - i % 17 * 10000 + i % 12 * 100 + i % 28)
            + numbered(L"^^^Wants to ask Zo\u00EB, her midwife, first; asked for the ", i, L"th time\r\n");
    }
    session.reply(L"MEVVELD GET", assessments);
    session.reply(L"MEVREF GET", refusals);
}

struct Step {
    const char* name;
    std::function<void()> act;
    std::vector<double> times = {};
};

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    test::ScriptedHost host;
    addRecords(*host.session);
    host.patient->patientNumber = 12;
    ShownPanel panel(host);
    auto& bar = *panel.view->findChild<FindBar*>();
    auto& words = *bar.findChild<QLineEdit*>();
    const auto type = [&](const QString& letter) { return [&words, letter] { words.insert(letter); }; };
    QComboBox* order = nullptr;
    for (auto* const list : bar.findChildren<QComboBox*>()) {
        if (list->accessibleName() == QLatin1String("Order"))
            order = list;
    }
    const auto sort = [&](RecordOrder by) { return [order, by] { order->setCurrentIndex(static_cast<int>(by)); }; };
    std::vector<Step> steps {
        { "open the bar", [&] { bar.find(); } },
        { "type e", type("e") },
        { "type h after it", [&] { words.setText("h"); } },
        { "type e (he)", type("e") },
        { "type r (her)", type("r") },
        { "two words", [&] { words.setText("her zoe 1"); } },
        { "nothing found", type("zz") },
        { "clear the field", [&] { words.clear(); } },
        { "newest first", sort(RecordOrder::NewestFirst) },
        { "by kind", sort(RecordOrder::ByKind) },
        { "type e, by kind", type("e") },
        { "Escape", [&] { bar.close(); } },
    };
    panel.paint();
    for (int round = 0; round < Rounds; ++round) {
        panel.control.LoadGrid(); // nothing is remembered from the round before
        panel.paint();
        for (Step& step : steps) {
            step.times.push_back(milliseconds([&] {
                step.act();
                QApplication::sendPostedEvents();
                panel.paint();
            }));
        }
    }
    std::printf("%d records, from the user's action to the painted list, milliseconds\n", Records);
    std::printf("%-18s %8s %8s\n", "", "median", "longest");
    for (const Step& step : steps)
        std::printf("%-18s %8.2f %8.2f\n", step.name, median(step.times),
            *std::max_element(step.times.begin(), step.times.end()));
    return 0;
}
