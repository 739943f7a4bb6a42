#pragma once

#include "platform/LogFormat.h"

#include <spdlog/logger.h>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// The three levels at which plug-ins log.
enum class KVKLogLevel { Default, Debug, Error };

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
    /// Host: replaces the handle. Requires: not null.
    void setLogger(std::shared_ptr<spdlog::logger> logger);

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<spdlog::logger> m_logger;
};

/// The host's log proxy: the lines that the host shows and keeps.
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
    using SinkId = int;

    /// Expands the format (see platform::formatMessage) and hands the line to the host.
    void proxyLogMessage(KVKLogLevel level, const char *format, const platform::LogArguments &arguments);

    /// Host: adds a receiver of lines. It must neither log itself nor add or remove receivers; an exception
    /// that leaves it is dropped.
    SinkId addSink(Sink sink);
    /// Host: after the return the sink is not called any more.
    void removeSink(SinkId id);

private:
    std::mutex m_mutex;
    SinkId m_nextId = 1;
    std::vector<std::pair<SinkId, Sink>> m_sinks;
};

/// The process's anchor and proxy. Never null, the same ones at every call.
[[nodiscard]] KVKLogAnchor *KVKLogGetAnchor();
[[nodiscard]] KVKLogProxy *KVKLogGetProxy();

/// Writes one event to both places: first the system log's handle at the level (default is its "info"), then
/// the log proxy, with the same format and arguments. What fails in one place does not keep the line from the
/// other.
///
/// Thread: any. Errors: throws std::invalid_argument for a format that is wrong (see
/// platform::formatMessage).
void KVKLogEvent(KVKLogLevel level, const char *format, const platform::LogArguments &arguments);
