#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <chrono>

#include "bench/BenchStation.h"
#include "bench/Hands.h"
#include "bench/PaintWatch.h"
#include "bench/Pairs.h"
#include "bench/Samples.h"
#include "bench/Serve.h"
#include "bench/baseline/BarePanels.h"
#include "bench/baseline/BareWindow.h"

// What a key costs the main thread in a field that holds so many characters already: its processor time,
// since what is shown of a long entry waits for the screen's next frame. Of more than 4,096 characters
// nothing is taken by the station's field.

namespace {

constexpr int Slots = 12;
constexpr int Keys = 64;
constexpr std::chrono::milliseconds Frames(40);

/// The time of one key, of many that come one straight after the other and are painted at last.
bench::Nanoseconds timeOfKey(QWidget *window)
{
    const bench::Nanoseconds begin = bench::threadTime();
    for (int key = 0; key < Keys; ++key) {
        bench::hands::type(window, QStringLiteral("7"));
        QCoreApplication::processEvents();
    }
    bench::serveFor(Frames);
    return (bench::threadTime() - begin) / Keys;
}

void fill(QWidget *window, int length)
{
    bench::hands::type(window, QString(length, QLatin1Char('7')));
    bench::serveFor(Frames);
}

void key(benchmark::State &state, int length)
{
    bench::BenchStation station(Slots);
    bench::PaintWatch watch;
    station.startAsking(bench::PanelKind::Slot);
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        watch.begin();
        station.ask();
        bench::serveUntil([&] { return watch.hasPainted(1); });
        fill(station.window(), length);
        samples.add(timeOfKey(station.window()));
        station.endRound();
    }
}

void bareKey(benchmark::State &state, int length)
{
    baseline::BareWindow window;
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        auto panels = baseline::slotPanels(window.document(), 1);
        baseline::open(panels);
        bench::serveAll();
        // As one text: so many keys would take the bare editor a minute.
        panels.front().field->setText(QString(length, QLatin1Char('7')));
        bench::serveFor(Frames);
        samples.add(timeOfKey(window.window()));
        baseline::remove(panels);
    }
}

[[maybe_unused]] const bool registered = [] {
    for (const int length : {1, 100, 4000, 10000}) {
        bench::registerPair(
            bench::nameWith("key", length), 3, [length](benchmark::State &state) { key(state, length); },
            [length](benchmark::State &state) { bareKey(state, length); });
    }
    return true;
}();

} // namespace
