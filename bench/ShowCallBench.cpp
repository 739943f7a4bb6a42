#include "plugin/Rooms.h"

#include <benchmark/benchmark.h>

#include "bench/BenchStation.h"

namespace {

using platform::Array;
using platform::Dictionary;

/// A question on a slot panel: call, draw, press, confirm, answer. What a sequence pays for asking a person
/// who answers at once.
void questionRoundTrip(benchmark::State &state)
{
    bench::BenchStation station(4);
    const Dictionary config{{"button", Array{"No", "Yes"}}};
    for ([[maybe_unused]] const auto _ : state) {
        station.startSequence([&] {
            platform::Error error;
            benchmark::DoNotOptimize(station.plugin().showView(0, config, &error));
        });
        platform::Button *yes = nullptr;
        bench::BenchStation::serveUntil([&] { return (yes = station.button("0", "Yes")) != nullptr; });
        station.plugin().rooms().confirmation.confirmBtnClicked(yes);
        station.finishSequence();
    }
}
BENCHMARK(questionRoundTrip)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// A message on a group panel, which is drawn in place of the one before and returns at once.
void messagePanelDrawn(benchmark::State &state)
{
    bench::BenchStation station(static_cast<int>(state.range(0)));
    const Dictionary config{{"message", "Please wait"}, {"column", 4}};
    for ([[maybe_unused]] const auto _ : state) {
        station.runSequence([&] {
            platform::Error error;
            benchmark::DoNotOptimize(station.plugin().showGroupView(0, config, &error));
        });
    }
}
BENCHMARK(messagePanelDrawn)->Arg(4)->Arg(12)->Arg(48)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
