// The cost of LoadGrid per row, compared with a plain copy of the reply and with splitting it by QString.
#include "bench/FunctionalStatusReply.h"
#include "control/kalmevRepHistCtrl.h"
#include "tests/support/ScriptedHost.h"

#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>

#include <chrono>

namespace health {
namespace {

void countRows(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * state.range(0)); }

// Measures the time that making the replies takes: it belongs to the session, not to the grid.
class TimedSession : public test::ScriptedSession {
public:
    using ScriptedSession::ScriptedSession;
    std::chrono::duration<double> spent {};

    Text callList(TextView name, TextView parameter) override
    {
        const auto start = std::chrono::steady_clock::now();
        Text reply = ScriptedSession::callList(name, parameter);
        spent += std::chrono::steady_clock::now() - start;
        return reply;
    }
};

void LoadGrid(benchmark::State& state)
{
    test::ScriptedHost host;
    const auto session = std::make_shared<TimedSession>(host.transcript);
    session->objects = host.session->objects;
    host.session = session;
    modShared shared(host.desktop);
    kalmevRepHistCtrl control(shared, host);
    host.patient->patientNumber = 12;
    host.session->reply(L"MEVVELD GET", functionalStatusReply(state.range(0)));
    control.UserControl_Initialize();
    control.UserControl_Show();
    for (auto _ : state) {
        session->spent = {};
        const auto start = std::chrono::steady_clock::now();
        control.LoadGrid();
        const std::chrono::duration<double> all = std::chrono::steady_clock::now() - start;
        state.SetIterationTime((all - session->spent).count());
        host.transcript.clear();
    }
    if (control.fgData.rowCount() != state.range(0))
        state.SkipWithError("not all rows were loaded");
    countRows(state);
}
BENCHMARK(LoadGrid)->RangeMultiplier(10)->Range(10, 100000)->UseManualTime();

void PlainCopy(benchmark::State& state)
{
    const Text reply = functionalStatusReply(state.range(0));
    for (auto _ : state) {
        Text copy(reply);
        benchmark::DoNotOptimize(copy.data());
    }
    countRows(state);
}
BENCHMARK(PlainCopy)->RangeMultiplier(10)->Range(10, 100000);

// Capitalizes the words of a value.
QString proper(const QString& text)
{
    QStringList words = QString(text).replace(u","_qs, u", "_qs).split(u' ');
    for (QString& word : words)
        word = word.left(1).toUpper() + word.mid(1).toLower();
    return words.join(u' ').replace(u", "_qs, u","_qs);
}

void SplitWithQString(benchmark::State& state)
{
    static const QStringList captions { u"Toileting"_qs, u"Bathing"_qs, u"Dressing"_qs, u"Transfers"_qs, u"Feeding"_qs,
        u"Continence"_qs, u"Finances"_qs, u"Cooking"_qs, u"Shopping"_qs, u"Chores"_qs, u"Meds"_qs, u"Transportation"_qs,
        u"Status Change"_qs, u"Caregiver"_qs };
    const QString reply = QString::fromStdWString(functionalStatusReply(state.range(0)));
    for (auto _ : state) {
        QList<QStringList> rows;
        for (const QString& line : reply.split(u"\r\n"_qs, Qt::SkipEmptyParts)) {
            const QStringList pieces = line.split(u'^');
            QStringList fields;
            for (int item = 0; item < 14; ++item) {
                const QString value = pieces.value(item + 3).split(u'|').value(0);
                if (!value.isEmpty())
                    fields.append(captions[item] + u'=' + proper(value));
            }
            const QStringList visit = pieces.value(2).split(u'|');
            rows.append({ u"Functional Status"_qs, visit.value(0) + u": "_qs + fields.join(u"; "_qs), pieces.value(0),
                visit.value(1), pieces.value(1), u"4"_qs });
        }
        benchmark::DoNotOptimize(rows.data());
    }
    countRows(state);
}
BENCHMARK(SplitWithQString)->RangeMultiplier(10)->Range(10, 100000);

}
}

BENCHMARK_MAIN();
