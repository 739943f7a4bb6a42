#include "bench/Samples.h"

#include <algorithm>
#include <chrono>

namespace bench {

Samples::~Samples()
{
    if (m_times.empty())
        return;
    const auto middle = m_times.begin() + static_cast<std::ptrdiff_t>(m_times.size() / 2);
    std::ranges::nth_element(m_times, middle);
    m_state.counters["median_ns"] = static_cast<double>(*middle);
}

void Samples::add(Nanoseconds time)
{
    m_times.push_back(time);
    m_state.SetIterationTime(std::chrono::duration<double>(std::chrono::nanoseconds(time)).count());
}

} // namespace bench
