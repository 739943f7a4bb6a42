#pragma once

#include <benchmark/benchmark.h>

#include <vector>

#include "bench/Clock.h"

namespace bench {

/// The times of a benchmark, one an iteration. A busy machine takes some of them away for milliseconds, so
/// that their median is what is reported, beside the benchmark's own mean.
class Samples
{
public:
    explicit Samples(benchmark::State &state)
        : m_state(state)
    {}
    /// Reports.
    ~Samples();
    Samples(const Samples &) = delete;
    Samples &operator=(const Samples &) = delete;

    void add(Nanoseconds time);

private:
    benchmark::State &m_state;
    std::vector<Nanoseconds> m_times;
};

} // namespace bench
