#include "platform/Value.h"

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

// From the Return key that ends an entry to the entry stored, coloured and painted.

namespace {

using bench::PanelKind;

/// So many entries go into panels before they are asked for anew.
int entriesOf(int slotCount)
{
    return std::min(slotCount, 12);
}

QString entryOf(int number)
{
    return QStringLiteral("SN%1").arg(number, 6, 10, QLatin1Char('0'));
}

void returned(benchmark::State &state, PanelKind kind, int slotCount)
{
    bench::BenchStation station(slotCount);
    bench::PaintWatch watch;
    station.startAsking(kind, slotCount);
    int entered = entriesOf(slotCount);
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        if (entered == entriesOf(slotCount)) {
            station.endRound();
            watch.begin();
            station.ask();
            bench::serveUntil([&] { return bench::hasPainted(watch, kind, slotCount); });
            bench::serveAll();
            entered = 0;
        }
        bench::hands::type(station.window(), entryOf(entered));
        bench::serveAll();
        watch.begin();
        const bench::Nanoseconds begin = bench::now();
        bench::hands::type(station.window(), QStringLiteral("\n"));
        bench::serveUntil([&] { return watch.hasPaintedAny(); });
        samples.add(bench::now() - begin);
        if (!platform::description(station.plugin().savedData()).contains(entryOf(entered)))
            state.SkipWithError("the entry is not stored");
        ++entered;
    }
}

/// A bare panel that does with an entry what an operator sees: it shows it and colours the slot's ground.
void takeEntries(baseline::BarePanel &panel, int &entered)
{
    QObject::connect(panel.field, &QLineEdit::returnPressed, panel.field, [&panel, &entered] {
        const bool isGroup = !panel.values.empty();
        const auto slot = static_cast<std::size_t>(isGroup ? entered : 0);
        QPalette palette = panel.boxes.at(slot)->palette();
        palette.setColor(QPalette::Window, Qt::green);
        panel.boxes.at(slot)->setPalette(palette);
        if (!isGroup)
            return;
        panel.values.at(slot)->setText(panel.field->text());
        panel.field->clear();
    });
}

void bareReturned(benchmark::State &state, PanelKind kind, int slotCount)
{
    baseline::BareWindow window;
    bench::PaintWatch watch;
    std::vector<baseline::BarePanel> panels;
    int entered = entriesOf(slotCount);
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        if (entered == entriesOf(slotCount)) {
            baseline::remove(panels);
            panels = bench::barePanelsOf(window.document(), kind, slotCount);
            for (baseline::BarePanel &panel : panels)
                takeEntries(panel, entered);
            baseline::open(panels);
            bench::serveAll();
            entered = 0;
        }
        if (kind == PanelKind::Slot)
            panels.at(static_cast<std::size_t>(entered)).field->setFocus();
        bench::hands::type(window.window(), entryOf(entered));
        bench::serveAll();
        watch.begin();
        const bench::Nanoseconds begin = bench::now();
        bench::hands::type(window.window(), QStringLiteral("\n"));
        bench::serveUntil([&] { return watch.hasPaintedAny(); });
        samples.add(bench::now() - begin);
        ++entered;
    }
}

[[maybe_unused]] const bool registered = [] {
    for (const auto &[name, kind] :
         {std::pair{"return.slot", PanelKind::Slot}, {"return.group", PanelKind::Group}}) {
        for (const int slotCount : {1, 4, 12, 48, 192, 768}) {
            bench::registerPair(
                bench::nameWith(name, slotCount), 24,
                [kind, slotCount](benchmark::State &state) { returned(state, kind, slotCount); },
                [kind, slotCount](benchmark::State &state) { bareReturned(state, kind, slotCount); });
        }
    }
    return true;
}();

} // namespace
