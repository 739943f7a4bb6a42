#pragma once

#include "kovan/KovanLogging/KVKLogRecord.h"
#include "platform/LogFormat.h"

#include <spdlog/logger.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

class KVKLogQueue;

/// The level of the system log that each is written at; default is its "info". Thread: any.
[[nodiscard]] spdlog::level::level_enum KVKLogSystemLevel(KVKLogLevel level);

/// The host's anchor in the system log.
///
/// Thread: any.
class KVKLogAnchor
{
public:
    KVKLogAnchor();

    /// The system log's handle. Never null. The program that hosts the plug-ins chooses where it writes;
    /// until it does so, nowhere.
    [[nodiscard]] std::shared_ptr<spdlog::logger> logger() const;
    /// Host: replaces the handle. Requires: not null. It is called on the logging thread, and whoever logs at
    /// a level that it takes waits for the text and for its sinks: a file is better written by a receiver of
    /// the proxy.
    void setLogger(std::shared_ptr<spdlog::logger> logger);
    /// The handle, where it does something with the level; null where it drops it.
    [[nodiscard]] std::shared_ptr<spdlog::logger> loggerFor(KVKLogLevel level) const;

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<spdlog::logger> m_logger;
};

/// The host's log proxy: the lines that the host shows and keeps.
///
/// There are two ways to get them. A *receiver* gets them in one order for all threads, on a thread of the
/// log's own, many at a time and some milliseconds after the event: what a logging thread pays for it does
/// not depend on how long the lines are. A *sink* is called before the event's call returns, and the logging
/// thread pays for the text and for what the sink does.
///
/// Thread: any; sinks are called on the logging thread, one line at a time.
class KVKLogProxy
{
public:
    struct Line
    {
        KVKLogLevel level;
        QString message;
    };
    using Sink = std::function<void(const Line &)>;
    using Receiver = std::function<void(std::span<const KVKLogRecord>)>;
    using SinkId = int;
    using ReceiverId = int;

    /// How long whoever ends the program at once should let flush() wait: a disk may hang.
    static constexpr std::chrono::milliseconds EndLimit{3000};

    KVKLogProxy();
    /// Hands out what is on its way. Requires: nobody uses it any more. The process's own is never destroyed.
    ~KVKLogProxy();
    KVKLogProxy(const KVKLogProxy &) = delete;
    KVKLogProxy &operator=(const KVKLogProxy &) = delete;

    /// Expands the format (see platform::formatMessage) and hands the line to the host. Errors: throws
    /// std::invalid_argument for a format that is wrong.
    void proxyLogMessage(KVKLogLevel level, const char *format, const platform::LogArguments &arguments);

    /// Host: adds a sink. It must neither log itself nor add or remove anybody; an exception that leaves it
    /// is dropped.
    SinkId addSink(Sink sink);
    /// Host: after the return the sink is not called any more.
    void removeSink(SinkId id);

    /// Host: adds a receiver of the lines from now on. It may log, and must neither add nor remove anybody,
    /// nor wait for a thread that may log; an exception that leaves it is dropped. Errors: throws
    /// std::system_error when the system has no thread left.
    [[nodiscard]] ReceiverId addReceiver(Receiver receiver);
    /// Host: after the return the receiver has had every line that was logged before, and is not called any
    /// more. Requires: not called by a receiver.
    void removeReceiver(ReceiverId id);
    /// Waits until the receivers have had every line that was logged before, at most as long as the limit
    /// says; false when they have not, and always when a receiver asks. Not needed before a usual end of the
    /// program, which exit() brings about, but before one by _Exit().
    [[nodiscard]] bool flush(std::optional<std::chrono::milliseconds> limit = std::nullopt);
    /// flush() for the handler of a signal: see KVKLogCrashGuard.
    void flushInHandler(std::chrono::milliseconds limit) const;
    /// Host: sets who tells which systems the calling thread works for; nothing sets nobody. It is called at
    /// each event, on the logging thread, and must neither log nor throw.
    void setOwners(std::function<QList<int>()> owners);

    /// Whether a line would come to anybody.
    [[nodiscard]] bool isHeard() const;

private:
    friend void KVKLogEvent(KVKLogLevel level, const char *format, platform::LogArguments &&arguments);
    friend KVKLogProxy *KVKLogGetProxy();

    void handOver(KVKLogLevel level, const char *format, platform::LogArguments &&arguments,
                  std::optional<QString> text);
    void tellSinks(const Line &line);

    std::mutex m_mutex;
    SinkId m_nextId = 1;
    std::vector<std::pair<SinkId, Sink>> m_sinks;
    std::atomic<int> m_sinkCount{0};
    std::unique_ptr<KVKLogQueue> m_queue;
};

/// The process's anchor and proxy. Never null, the same ones at every call.
[[nodiscard]] KVKLogAnchor *KVKLogGetAnchor();
[[nodiscard]] KVKLogProxy *KVKLogGetProxy();

/// Writes one event to both places: first the system log's handle at the level (default is its "info"), then
/// the log proxy, with the same format and arguments. What fails in one place does not keep the line from the
/// other. The text is made once, and not before it is needed, so that nothing is made where nobody listens:
/// what dictionaries, arrays and texts among the arguments share must not be written in place afterwards (see
/// platform::LogArgument).
///
/// Thread: any. Errors: throws std::invalid_argument for a format that is wrong (see
/// platform::formatMessage).
void KVKLogEvent(KVKLogLevel level, const char *format, const platform::LogArguments &arguments);
void KVKLogEvent(KVKLogLevel level, const char *format, platform::LogArguments &&arguments);

/// Whether an event of the level would come to anybody: for arguments that cost something to make.
/// Thread: any.
[[nodiscard]] bool KVKLogIsHeard(KVKLogLevel level);
