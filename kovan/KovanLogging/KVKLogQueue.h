#pragma once

#include "kovan/KovanLogging/KVKLogRecord.h"
#include "platform/LogFormat.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

/// Events on their way from the threads that log to those who receive lines, in one order. Private to the
/// library.
///
/// The texts are made and handed out on a thread of the queue's own, without a lock, some milliseconds after
/// the event and many at a time: a thread that logs leaves its values here and goes on. Nothing is left out;
/// where the receivers are slower than the loggers, and what waits has grown to the limit, whoever logs
/// waits. Once the queue has ended, whoever pushes hands out by flush().
///
/// Thread: any, unless a function says otherwise. Ownership: nobody uses it any more when it is destroyed.
class KVKLogQueue
{
public:
    /// Gets lines in their order, at least one. What it throws is dropped.
    using Receiver = std::function<void(std::span<const KVKLogRecord>)>;
    using Owners = std::function<QList<int>()>;

    /// Bytes that may wait, as far as their weight is known without walking them.
    static constexpr std::size_t UsualLimit = 64UL * 1024 * 1024;

    struct Event
    {
        KVKLogLevel level = KVKLogLevel::Default;
        std::string format; ///< An own one: the library that it stands in may be gone when it is read.
        platform::LogArguments arguments;
        std::optional<QString> text; ///< Where somebody needed it at once.
    };

    explicit KVKLogQueue(std::size_t limit = UsualLimit);
    /// Hands out what waits.
    ~KVKLogQueue();
    KVKLogQueue(const KVKLogQueue &) = delete;
    KVKLogQueue &operator=(const KVKLogQueue &) = delete;

    [[nodiscard]] bool isHeard() const { return m_heard.load(std::memory_order_relaxed) > 0; }
    [[nodiscard]] bool hasEnded() const { return m_hasEnded; }

    /// Gets the events from now on. Errors: throws std::system_error when the system has no thread left.
    [[nodiscard]] int add(Receiver receiver);
    /// Returns when the receiver has had all events so far, and is not called any more. Not from a receiver.
    void remove(int id);
    /// Who tells which systems the calling thread works for. It is called at each event under the queue's
    /// lock.
    void setOwners(Owners owners);

    /// Waits, where too much is waiting already. Requires: the caller holds no lock that a receiver needs.
    void waitForRoom();
    /// Takes the event with the time and the thread of the call.
    void push(Event event);
    /// Waits until everything that was pushed so far has been received; false when it was not within the
    /// limit, or when a receiver asks.
    [[nodiscard]] bool flush(std::optional<std::chrono::milliseconds> limit);
    /// Hands out what waits, and ends the thread.
    void end();

    /// flush() for a signal's handler: takes no lock and calls nothing that a handler must not call.
    void flushInHandler(std::chrono::milliseconds limit) const;

private:
    struct Waiting
    {
        Event event;
        KVKLogRecord record; ///< Without a message.
        std::size_t weight = 0;
    };
    /// So many as become lines at a time; a queue of them neither moves what waits nor allocates for each
    /// event.
    using Share = std::vector<Waiting>;
    struct Listener
    {
        int id;
        Receiver receive;
        quint64 first;                   ///< The number of the first event that it gets,
        std::optional<quint64> end = {}; ///< and of the one behind its last, once it is to go.
        bool isTold = false;             ///< Whether it is among those that a batch is handed out to.
    };
    /// What is being handed out, and to whom.
    struct Batch
    {
        std::deque<Share> shares;
        std::vector<Listener *> listeners;
    };
    using Lock = std::unique_lock<std::mutex>;

    void work();
    [[nodiscard]] bool waitForEvents(Lock &lock);
    void sleep(Lock &lock);
    [[nodiscard]] Share &shareWithRoom();
    void handOutUpTo(quint64 count, Lock &lock);
    [[nodiscard]] Batch takeBatch();
    void handOut(Batch batch, Lock &lock);
    static void tell(const Listener &listener, std::span<const KVKLogRecord> records, quint64 first);
    void hurry();
    [[nodiscard]] bool isReceiver() const;

    const std::size_t m_limit;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake; ///< For the queue's thread.
    std::condition_variable m_done; ///< For those who wait for it.
    std::deque<Share> m_waiting;
    Share m_spare; ///< An empty one with its memory, for the next that is needed.
    std::vector<std::unique_ptr<Listener>> m_listeners;
    Owners m_owners;
    int m_nextId = 1;
    bool m_sleeps =
        false; ///< Whether somebody has to wake the thread; it looks by itself while much is logged.
    bool m_hurries = false;
    bool m_handsOut = false;
    bool m_isEnding = false;
    // Written under the lock, read also without it.
    std::atomic<bool> m_hasEnded{false};
    std::atomic<int> m_heard{0};
    std::atomic<quint64> m_pushed{0};
    std::atomic<quint64> m_delivered{0};
    std::atomic<std::size_t> m_weight{0}; ///< Of what was pushed and not yet delivered.
    std::atomic<pid_t> m_receiving{0};    ///< The thread that hands out, 0 while none does.
    std::thread m_thread;
};
