#include "bench/Gate.h"

#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "platform/MainQueue.h"

namespace bench {

platform::Dictionary Gate::functionTable()
{
    return {{"pass", platform::Array{__kviGetSelectorLabel("pass:")}}};
}

platform::Value Gate::pass(platform::Error *)
{
    std::unique_lock lock(m_mutex);
    const int round = m_round;
    ++m_waiting;
    // Whoever waits for the last one serves events meanwhile.
    platform::MainQueue::async([] {});
    m_changed.wait(lock, [&] { return m_closed || m_round != round; });
    return !m_closed;
}

void Gate::open()
{
    const std::scoped_lock lock(m_mutex);
    ++m_round;
    m_waiting = 0;
    m_changed.notify_all();
}

void Gate::close()
{
    const std::scoped_lock lock(m_mutex);
    m_closed = true;
    m_changed.notify_all();
}

int Gate::waiting() const
{
    const std::scoped_lock lock(m_mutex);
    return m_waiting;
}

} // namespace bench
