#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace bench {

using Benchmark = std::function<void(benchmark::State &state)>;

/// Registers a figure under its name and its baseline under "bare/" and that name, with as many iterations
/// each. How long an iteration took is said by the benchmark itself. Thread: before main().
void registerPair(const std::string &name, int iterations, const Benchmark &figure,
                  const Benchmark &baseline);

/// "NAME/12".
[[nodiscard]] std::string nameWith(const std::string &name, int size);
/// As many iterations for a panel of so many slots as take a tenth of a second or so.
[[nodiscard]] int iterationsFor(int slotCount);

} // namespace bench
