#include <benchmark/benchmark.h>

#include "bench/BarePanelsOf.h"
#include "bench/BenchStation.h"
#include "bench/PaintWatch.h"
#include "bench/Pairs.h"
#include "bench/Samples.h"
#include "bench/Serve.h"
#include "bench/baseline/BareWindow.h"

// From the Lua call to the panel painted and its field focused: the panel of a group, or one panel for each
// slot, all asked for at once.

namespace {

using bench::PanelKind;

void drawn(benchmark::State &state, PanelKind kind, int slotCount)
{
    bench::BenchStation station(slotCount);
    bench::PaintWatch watch;
    station.startAsking(kind, slotCount);
    const auto drawOnce = [&] {
        watch.begin();
        station.ask();
        bench::serveUntil([&] { return bench::hasPainted(watch, kind, slotCount); });
        const bench::Nanoseconds time = bench::now() - station.firstCall();
        station.endRound();
        return time;
    };
    // The first call of a group makes its overview, which stays.
    drawOnce();
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state)
        samples.add(drawOnce());
}

void bareDrawn(benchmark::State &state, PanelKind kind, int slotCount)
{
    baseline::BareWindow window;
    bench::PaintWatch watch;
    const auto drawOnce = [&] {
        watch.begin();
        const bench::Nanoseconds begin = bench::now();
        auto panels = bench::barePanelsOf(window.document(), kind, slotCount);
        baseline::open(panels);
        bench::serveUntil([&] { return bench::hasPainted(watch, kind, slotCount); });
        const bench::Nanoseconds time = bench::now() - begin;
        baseline::remove(panels);
        bench::serveAll();
        return time;
    };
    drawOnce();
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state)
        samples.add(drawOnce());
}

[[maybe_unused]] const bool registered = [] {
    for (const auto &[name, kind] : {std::pair{"drawn.slot", PanelKind::Slot},
                                     {"drawn.group", PanelKind::Group},
                                     {"drawn.switch", PanelKind::Switch}}) {
        for (const int slotCount : {1, 4, 12, 48, 192, 768}) {
            bench::registerPair(
                bench::nameWith(name, slotCount), bench::iterationsFor(slotCount),
                [kind, slotCount](benchmark::State &state) { drawn(state, kind, slotCount); },
                [kind, slotCount](benchmark::State &state) { bareDrawn(state, kind, slotCount); });
        }
    }
    return true;
}();

} // namespace
