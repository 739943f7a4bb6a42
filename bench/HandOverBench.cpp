#include <benchmark/benchmark.h>

#include "bench/Samples.h"
#include "bench/baseline/HandOver.h"

// What the figures of a single event are held against: waking a thread that sleeps.

namespace {

void handOver(benchmark::State &state)
{
    baseline::HandOver waiting;
    bench::Samples samples(state);
    for ([[maybe_unused]] const auto _ : state) {
        waiting.awaitSleep();
        const bench::Nanoseconds begin = bench::now();
        waiting.wake();
        samples.add(waiting.awaitWoken() - begin);
    }
}
BENCHMARK(handOver)->Name("bare/hand-over")->Iterations(400)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
