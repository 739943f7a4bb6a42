#include "kovan/KovanLogging/KVKLogging.h"

#include <benchmark/benchmark.h>

namespace {

/// One event with a text and a number, to a system log that drops it and one receiver of the proxy.
void logEvent(benchmark::State &state)
{
    std::size_t lines = 0;
    const auto sink = KVKLogGetProxy()->addSink([&lines](const KVKLogProxy::Line &) { ++lines; });
    for ([[maybe_unused]] const auto _ : state)
        KVKLogEvent(KVKLogLevel::Debug, "%s: %@ [%ld]", {"-[InteractiveView getCondition:]", "G1", 12});
    KVKLogGetProxy()->removeSink(sink);
    benchmark::DoNotOptimize(lines);
}
BENCHMARK(logEvent);

} // namespace
