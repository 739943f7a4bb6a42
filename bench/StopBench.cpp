#include <benchmark/benchmark.h>

#include <algorithm>

#include "bench/BenchStation.h"
#include "bench/Clock.h"
#include "bench/PaintWatch.h"
#include "bench/Pairs.h"
#include "bench/Samples.h"
#include "bench/Serve.h"
#include "bench/baseline/BarePanels.h"
#include "bench/baseline/BareWindow.h"
#include "bench/baseline/HandOver.h"

// From Stop to the last of the waiting calls returned and the last panel gone. As many groups as slots.

namespace {

void stopped(benchmark::State &state, int side)
{
    const int systems = side * side;
    bench::BenchStation station(side, side);
    bench::PaintWatch watch;
    station.startAsking(bench::PanelKind::Slot, systems);
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        watch.begin();
        station.ask();
        bench::serveUntil([&] { return watch.hasPainted(systems); });
        const auto fields = station.parts().fields();
        const bench::Nanoseconds beginOfMain = bench::threadTime();
        const bench::Nanoseconds begin = bench::now();
        station.plugin().interruptWaitingCalls();
        bench::serveUntil([&] {
            return station.atGate() == systems && std::ranges::all_of(fields, [](const auto &field) {
                       return !field || !field->isVisible();
                   });
        });
        const bench::Nanoseconds took = bench::now() - begin;
        samples.add(took);
        state.counters["main_share"] =
            static_cast<double>(bench::threadTime() - beginOfMain) / static_cast<double>(took);
        station.endRound();
    }
}

void bareStopped(benchmark::State &state, int side)
{
    const int systems = side * side;
    baseline::BareWindow window;
    baseline::HandOver waiting(systems);
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        auto panels = baseline::slotPanels(window.document(), systems);
        baseline::open(panels);
        bench::serveAll();
        waiting.awaitSleep();
        const bench::Nanoseconds begin = bench::now();
        waiting.wake();
        baseline::remove(panels);
        static_cast<void>(waiting.awaitWoken());
        samples.add(bench::now() - begin);
    }
}

[[maybe_unused]] const bool registered = [] {
    for (const int side : {8, 16, 32}) {
        bench::registerPair(
            bench::nameWith("stop", side * side), 1,
            [side](benchmark::State &state) { stopped(state, side); },
            [side](benchmark::State &state) { bareStopped(state, side); });
    }
    return true;
}();

} // namespace
