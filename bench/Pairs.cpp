#include "bench/Pairs.h"

#include <algorithm>

namespace bench {

void registerPair(const std::string &name, int iterations, const Benchmark &figure, const Benchmark &baseline)
{
    for (const auto &[full, run] : {std::pair{name, figure}, std::pair{"bare/" + name, baseline}}) {
        benchmark::RegisterBenchmark(full.c_str(), run)
            ->Iterations(iterations)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
}

std::string nameWith(const std::string &name, int size)
{
    return name + "/" + std::to_string(size);
}

int iterationsFor(int slotCount)
{
    return std::clamp(240 / slotCount, 3, 24);
}

} // namespace bench
