#include "plugin/Rooms.h"

#include <benchmark/benchmark.h>

#include "bench/BenchStation.h"

namespace {

using platform::Array;
using platform::Dictionary;

/// A group's serial numbers of 16 characters, scanned without a pause into the shared field. The scanner
/// sends a key every millisecond or so; a key must cost far less.
void groupScanned(benchmark::State &state)
{
    const int slotCount = static_cast<int>(state.range(0));
    bench::BenchStation station(slotCount);
    Array inputs;
    QStringList entries;
    for (int slot = 1; slot <= slotCount; ++slot) {
        inputs.append(bench::BenchStation::slotName(slot));
        entries.append(QStringLiteral("SERIALNUMBER%1\n").arg(slot, 4, 10, QLatin1Char('0')));
    }
    const Dictionary config{{"input", inputs}, {"length", 16}, {"column", 4}};
    for ([[maybe_unused]] const auto _ : state) {
        state.PauseTiming();
        station.startSequence([&] {
            platform::Error error;
            benchmark::DoNotOptimize(station.plugin().showGroupView(0, config, &error));
        });
        platform::Button *ok = nullptr;
        bench::BenchStation::serveUntil([&] { return (ok = station.button("G1", "OK")) != nullptr; });
        state.ResumeTiming();
        for (const QString &entry : entries)
            station.type(entry);
        state.PauseTiming();
        station.plugin().rooms().confirmation.confirmBtnClicked(ok);
        station.finishSequence();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * slotCount * 17);
}
BENCHMARK(groupScanned)->Arg(4)->Arg(12)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
