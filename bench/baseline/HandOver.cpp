#include "bench/baseline/HandOver.h"

#include <algorithm>

namespace baseline {

HandOver::HandOver(int threads)
    : m_count(threads)
{
    for (int i = 0; i < threads; ++i)
        m_threads.emplace_back([this] { work(); });
}

HandOver::~HandOver()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_ends = true;
    }
    m_toThreads.notify_all();
}

void HandOver::work()
{
    std::unique_lock lock(m_mutex);
    while (!m_ends) {
        const int round = m_round;
        ++m_asleep;
        m_fromThreads.notify_one();
        m_toThreads.wait(lock, [&] { return m_ends || m_round != round; });
        m_lastWoken = std::max(m_lastWoken, bench::now());
        ++m_woken;
        m_fromThreads.notify_one();
    }
}

void HandOver::awaitSleep()
{
    std::unique_lock lock(m_mutex);
    m_fromThreads.wait(lock, [this] { return m_asleep == m_count; });
}

void HandOver::wake()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_asleep = 0;
        m_woken = 0;
        ++m_round;
    }
    m_toThreads.notify_all();
}

bench::Nanoseconds HandOver::awaitWoken()
{
    std::unique_lock lock(m_mutex);
    m_fromThreads.wait(lock, [this] { return m_woken == m_count; });
    return m_lastWoken;
}

} // namespace baseline
