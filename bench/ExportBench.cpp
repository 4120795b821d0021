// The cost of an export by the number of records.
#include "records/ListExport.h"

#include "bench/FunctionalStatusReply.h"
#include "control/kalmevRepHistCtrl.h"
#include "records/CsvExport.h"
#include "tests/support/ScriptedHost.h"

#include <benchmark/benchmark.h>

#include <numeric>

namespace health {
namespace {

// A list of functional status assessments.
struct ExportedList {
    explicit ExportedList(long rows)
    {
        host.patient->patientNumber = 12;
        host.session->reply(L"MEVVELD GET", functionalStatusReply(rows));
        control.UserControl_Initialize();
        control.UserControl_Show();
        records = listedRecords(control);
        order.resize(records.size());
        std::iota(order.begin(), order.end(), 0);
    }

    test::ScriptedHost host;
    modShared shared { host.desktop };
    kalmevRepHistCtrl control { shared, host };
    std::vector<ListedRecord> records;
    std::vector<int> order;
};

void measure(benchmark::State& state, ExportFormat format)
{
    ExportedList list(state.range(0));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const auto files = ListExport(list.control, list.records, list.order).files(format);
        bytes = files.at(0).bytes.size();
    }
    if (list.records.size() != static_cast<std::size_t>(state.range(0)))
        state.SkipWithError("not all records were exported");
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["bytes"] = static_cast<double>(bytes);
}

void ExportFhir(benchmark::State& state) { measure(state, ExportFormat::Fhir); }
BENCHMARK(ExportFhir)->Arg(50)->Arg(5000)->Unit(benchmark::kMillisecond);

void ExportCsv(benchmark::State& state) { measure(state, ExportFormat::Csv); }
BENCHMARK(ExportCsv)->Arg(50)->Arg(5000)->Unit(benchmark::kMillisecond);

void CopyAll(benchmark::State& state)
{
    ExportedList list(state.range(0));
    for (auto _ : state) {
        for (const ListedRecord& record : list.records)
            benchmark::DoNotOptimize(copiedRecord(record));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CopyAll)->Arg(5000)->Unit(benchmark::kMillisecond);

}
}

BENCHMARK_MAIN();
