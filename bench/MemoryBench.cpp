#include <benchmark/benchmark.h>

#include "bench/BenchStation.h"
#include "bench/PaintWatch.h"
#include "bench/Pairs.h"
#include "bench/Serve.h"
#include "bench/baseline/BarePanels.h"
#include "bench/baseline/BareWindow.h"
#include "soak/Figures.h"

// The resident memory of a slot's panel that is open, and what is left of one that was closed.

namespace {

constexpr int Panels = 32;
constexpr int WarmRounds = 8;
constexpr int Rounds = 32;

/// Reports for a way to open so many panels and one to close them.
template <class Open, class Close>
void weigh(benchmark::State &state, const Open &open, const Close &close)
{
    for ([[maybe_unused]] const auto _ : state) {
        for (int round = 0; round < WarmRounds; ++round) {
            open();
            close();
        }
        const qint64 before = soak::Figures::residentMemory();
        open();
        const qint64 opened = soak::Figures::residentMemory();
        close();
        for (int round = 1; round < Rounds; ++round) {
            open();
            close();
        }
        const qint64 closed = soak::Figures::residentMemory();
        state.counters["open_kib"] = static_cast<double>(opened - before) / Panels;
        state.counters["closed_kib"] = static_cast<double>(closed - before) / (Panels * Rounds);
        state.SetIterationTime(1.0);
    }
}

void memory(benchmark::State &state)
{
    bench::BenchStation station(Panels);
    bench::PaintWatch watch;
    station.startAsking(bench::PanelKind::Slot, Panels);
    weigh(
        state,
        [&] {
            watch.begin();
            station.ask();
            bench::serveUntil([&] { return watch.hasPainted(Panels); });
        },
        [&] { station.endRound(); });
}

void bareMemory(benchmark::State &state)
{
    baseline::BareWindow window;
    std::vector<baseline::BarePanel> panels;
    weigh(
        state,
        [&] {
            panels = baseline::slotPanels(window.document(), Panels);
            baseline::open(panels);
            bench::serveAll();
        },
        [&] {
            baseline::remove(panels);
            bench::serveAll();
        });
}

[[maybe_unused]] const bool registered = [] {
    bench::registerPair("memory", 1, memory, bareMemory);
    return true;
}();

} // namespace
