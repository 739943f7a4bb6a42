#include "kovan/KovanLogging/KVKLogQueue.h"

#include <spdlog/details/os.h>

#include <algorithm>
#include <ctime>
#include <unistd.h>
#include <utility>

namespace {

/// Nobody sees the delay, and a burst of lines is written at once.
constexpr std::chrono::milliseconds Gathering{5};
/// Looks without an event before the thread sleeps until one comes: to wake it costs the logger more than to
/// look costs the thread.
constexpr int LooksBeforeSleep = 200;
/// Texts that exist at a time. An event's values go when its text is there.
constexpr std::size_t LinesAtOnce = 256;

QString textOf(const KVKLogQueue::Event &event)
{
    try {
        return event.text ? *event.text : platform::formatMessage(event.format.c_str(), event.arguments);
    } catch (...) {
        // A value whose type cannot say what it is. That there was an event is still to be seen.
        return QString::fromStdString(event.format);
    }
}

std::size_t weightOf(const KVKLogQueue::Event &event)
{
    // What the event itself takes, its format and the list of its arguments among it.
    std::size_t weight = 400;
    for (const platform::LogArgument &argument : event.arguments)
        weight += argument.weight();
    if (event.text)
        weight += static_cast<std::size_t>(event.text->size()) * sizeof(QChar);
    return weight;
}

} // namespace

KVKLogQueue::KVKLogQueue(std::size_t limit)
    : m_limit(limit)
{}

KVKLogQueue::~KVKLogQueue()
{
    end();
}

int KVKLogQueue::add(Receiver receiver)
{
    const Lock lock(m_mutex);
    // Made here, since most processes and tests have no receiver.
    if (!m_thread.joinable() && !m_isEnding)
        m_thread = std::thread([this] { work(); });
    m_listeners.push_back(std::make_unique<Listener>(Listener{m_nextId, std::move(receiver), m_pushed}));
    ++m_heard;
    return m_nextId++;
}

void KVKLogQueue::remove(int id)
{
    Lock lock(m_mutex);
    const auto found = std::ranges::find(m_listeners, id, [](const auto &listener) { return listener->id; });
    if (found == m_listeners.end() || (*found)->end)
        return;
    Listener *const listener = found->get();
    listener->end = m_pushed;
    --m_heard;
    hurry();
    // Not with its last line, but with that line's batch: until then it may be called.
    m_done.wait(lock, [&] { return m_delivered >= *listener->end && !listener->isTold; });
    std::erase_if(m_listeners, [id](const auto &each) { return each->id == id; });
}

void KVKLogQueue::setOwners(Owners owners)
{
    const Lock lock(m_mutex);
    m_owners = std::move(owners);
}

void KVKLogQueue::waitForRoom()
{
    if (m_weight.load(std::memory_order_relaxed) < m_limit)
        return;
    Lock lock(m_mutex);
    if (isReceiver())
        return;
    m_done.wait(lock, [this] {
        hurry();
        return m_weight < m_limit || m_hasEnded;
    });
}

void KVKLogQueue::push(Event event)
{
    Waiting next{std::move(event), {}, 0};
    next.record.level = next.event.level;
    next.record.thread = spdlog::details::os::thread_id();
    next.weight = weightOf(next.event);
    Lock lock(m_mutex);
    Share &share = shareWithRoom();
    // Within the lock, so that the times of the lines stand in their order.
    next.record.time = std::chrono::system_clock::now();
    if (m_owners)
        next.record.systems = m_owners();
    m_weight += next.weight;
    share.push_back(std::move(next));
    ++m_pushed;
    const bool sleeps = std::exchange(m_sleeps, false);
    lock.unlock();
    if (sleeps)
        m_wake.notify_one();
}

bool KVKLogQueue::flush(std::optional<std::chrono::milliseconds> limit)
{
    Lock lock(m_mutex);
    if (isReceiver())
        return false;
    const quint64 count = m_pushed;
    if (m_hasEnded) {
        handOutUpTo(count, lock);
        return true;
    }
    hurry();
    const auto isDelivered = [&] { return m_delivered >= count; };
    if (limit)
        return m_done.wait_for(lock, *limit, isDelivered);
    m_done.wait(lock, isDelivered);
    return true;
}

void KVKLogQueue::end()
{
    {
        const Lock lock(m_mutex);
        m_isEnding = true;
        m_hasEnded = !m_thread.joinable();
    }
    m_wake.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void KVKLogQueue::flushInHandler(std::chrono::milliseconds limit) const
{
    if (isReceiver())
        return;
    const quint64 count = m_pushed;
    constexpr timespec Look{0, 1'000'000};
    // While something waits, the thread looks by itself.
    for (auto looks = limit.count(); looks > 0 && m_delivered < count; --looks)
        ::nanosleep(&Look, nullptr);
}

void KVKLogQueue::work()
{
    Lock lock(m_mutex);
    while (waitForEvents(lock))
        handOut(takeBatch(), lock);
    m_hasEnded = true;
    m_done.notify_all();
}

/// False when the queue is to end and nothing waits.
bool KVKLogQueue::waitForEvents(Lock &lock)
{
    for (int looks = 0;; ++looks) {
        if (looks == LooksBeforeSleep) {
            sleep(lock);
            looks = 0;
        }
        m_wake.wait_for(lock, Gathering, [this] { return m_hurries || m_isEnding; });
        if (!m_waiting.empty())
            return true;
        if (m_isEnding)
            return false;
    }
}

void KVKLogQueue::sleep(Lock &lock)
{
    m_sleeps = true;
    m_wake.wait(lock, [this] { return !m_sleeps || m_isEnding; });
    m_sleeps = false;
}

KVKLogQueue::Share &KVKLogQueue::shareWithRoom()
{
    if (m_waiting.empty() || m_waiting.back().size() == LinesAtOnce) {
        m_waiting.push_back(std::exchange(m_spare, {}));
        m_waiting.back().reserve(LinesAtOnce);
    }
    return m_waiting.back();
}

/// When there is no thread any more.
void KVKLogQueue::handOutUpTo(quint64 count, Lock &lock)
{
    while (m_delivered < count) {
        if (m_handsOut)
            m_done.wait(lock);
        else
            handOut(takeBatch(), lock);
    }
}

KVKLogQueue::Batch KVKLogQueue::takeBatch()
{
    m_hurries = false;
    Batch batch{std::exchange(m_waiting, {}), {}};
    for (const auto &listener : m_listeners) {
        // Who has waited for its last event is about to free it.
        if (listener->end && *listener->end <= m_delivered)
            continue;
        listener->isTold = true;
        batch.listeners.push_back(listener.get());
    }
    return batch;
}

void KVKLogQueue::handOut(Batch batch, Lock &lock)
{
    m_handsOut = true;
    m_receiving = ::gettid();
    quint64 first = m_delivered;
    std::vector<KVKLogRecord> records;
    for (Share &share : batch.shares) {
        lock.unlock();
        std::size_t weight = 0;
        records.clear();
        for (Waiting &next : share) {
            next.record.message = textOf(next.event);
            weight += next.weight;
            records.push_back(std::move(next.record));
        }
        // The values go here, and not where somebody would wait for it.
        share.clear();
        for (const Listener *listener : batch.listeners)
            tell(*listener, records, first);
        first += records.size();
        lock.lock();
        m_weight -= weight;
        m_delivered = first;
        m_spare = std::move(share);
        m_done.notify_all();
    }
    for (Listener *listener : batch.listeners)
        listener->isTold = false;
    m_receiving = 0;
    m_handsOut = false;
    m_done.notify_all();
}

/// Of the records, whose first one has the number, those that are for the listener.
void KVKLogQueue::tell(const Listener &listener, std::span<const KVKLogRecord> records, quint64 first)
{
    if (first < listener.first)
        records = records.subspan(std::min<std::size_t>(records.size(), listener.first - first));
    if (records.empty())
        return;
    try {
        listener.receive(records);
    } catch (...) {
        // One receiver's trouble must not keep the lines from the others, and nobody here can mend it.
    }
}

/// Lets the thread not wait for more.
void KVKLogQueue::hurry()
{
    if (m_waiting.empty())
        return;
    m_hurries = true;
    m_wake.notify_one();
}

bool KVKLogQueue::isReceiver() const
{
    return m_receiving == ::gettid();
}
