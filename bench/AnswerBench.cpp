#include "platform/ScrollView.h"

#include <benchmark/benchmark.h>

#include <algorithm>

#include "bench/BarePanelsOf.h"
#include "bench/BenchStation.h"
#include "bench/Hands.h"
#include "bench/PaintWatch.h"
#include "bench/Pairs.h"
#include "bench/Samples.h"
#include "bench/Serve.h"
#include "bench/baseline/BareWindow.h"
#include "bench/baseline/HandOver.h"

// From the release of the mouse button on "OK" to the Lua call returned, with all other panels of the station
// still standing.

namespace {

using bench::PanelKind;

/// So many panels are answered before they are asked for anew.
int answersOf(PanelKind kind, int slotCount)
{
    return kind == PanelKind::Slot ? std::min(slotCount, 12) : 1;
}

/// Enters what the panel that has the focus asks for, and returns its "OK".
platform::Button *fill(bench::BenchStation &station, PanelKind kind, int slotCount)
{
    if (kind == PanelKind::Slot) {
        const platform::TextField *field = bench::BenchStation::focusField();
        bench::hands::type(station.window(), QStringLiteral("SN\n"));
        return soak::SoakStation::buttonBeside(field, QStringLiteral("OK"));
    }
    const int entries = kind == PanelKind::Group ? std::min(slotCount, bench::MostEntries) : 0;
    for (int slot = 0; slot < entries; ++slot)
        bench::hands::type(station.window(), QStringLiteral("SN%1\n").arg(slot));
    return station.parts().button(QStringLiteral("G1"), QStringLiteral("OK"));
}

void answered(benchmark::State &state, PanelKind kind, int slotCount)
{
    bench::BenchStation station(slotCount);
    bench::PaintWatch watch;
    station.startAsking(kind, slotCount);
    int answers = answersOf(kind, slotCount);
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        if (answers == answersOf(kind, slotCount)) {
            station.endRound();
            watch.begin();
            station.ask();
            bench::serveUntil([&] { return bench::hasPainted(watch, kind, slotCount); });
            answers = 0;
        }
        platform::Button *ok = fill(station, kind, slotCount);
        platform::ScrollView::reveal(ok);
        bench::serveAll();
        bench::hands::press(ok);
        bench::serveAll();
        const int returns = station.returns();
        const bench::Nanoseconds begin = bench::now();
        bench::hands::release(ok);
        bench::serveUntil([&] { return station.returns() > returns; });
        samples.add(station.lastReturn() - begin);
        bench::serveAll();
        ++answers;
    }
}

void bareAnswered(benchmark::State &state, PanelKind kind, int slotCount)
{
    baseline::BareWindow window;
    baseline::HandOver waiting;
    std::vector<baseline::BarePanel> panels;
    int answers = answersOf(kind, slotCount);
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        if (answers == answersOf(kind, slotCount)) {
            baseline::remove(panels);
            panels = bench::barePanelsOf(window.document(), kind, slotCount);
            baseline::open(panels);
            answers = 0;
        }
        bench::serveAll();
        waiting.awaitSleep();
        const bench::Nanoseconds begin = bench::now();
        delete panels.back().frame;
        waiting.wake();
        samples.add(waiting.awaitWoken() - begin);
        panels.pop_back();
        ++answers;
    }
}

[[maybe_unused]] const bool registered = [] {
    for (const auto &[name, kind] : {std::pair{"answer.slot", PanelKind::Slot},
                                     {"answer.group", PanelKind::Group},
                                     {"answer.switch", PanelKind::Switch}}) {
        for (const int slotCount : {1, 4, 12, 48, 192, 768}) {
            bench::registerPair(
                bench::nameWith(name, slotCount),
                kind == PanelKind::Slot ? 24 : bench::iterationsFor(slotCount),
                [kind, slotCount](benchmark::State &state) { answered(state, kind, slotCount); },
                [kind, slotCount](benchmark::State &state) { bareAnswered(state, kind, slotCount); });
        }
    }
    return true;
}();

} // namespace
