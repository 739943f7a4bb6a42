#include "kovan/KovanLogging/KVKLogging.h"

#include <spdlog/sinks/null_sink.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

/// The message goes as data: what looks like a placeholder in it is text of an operator or a script.
void writeToSystemLog(KVKLogLevel level, const std::string &message)
{
    try {
        KVKLogGetAnchor()->logger()->log(KVKLogSystemLevel(level), spdlog::string_view_t(message));
    } catch (...) {
        // The logger reports ordinary exceptions of its sinks itself; no other may keep the line from the
        // proxy.
    }
}

} // namespace

KVKLogAnchor::KVKLogAnchor()
    : m_logger(
          // Until a host gives another one what is logged goes nowhere, so that nobody has to ask whether
          // there is a logger.
          std::make_shared<spdlog::logger>("interactive", std::make_shared<spdlog::sinks::null_sink_mt>()))
{}

std::shared_ptr<spdlog::logger> KVKLogAnchor::logger() const
{
    const std::lock_guard lock(m_mutex);
    return m_logger;
}

void KVKLogAnchor::setLogger(std::shared_ptr<spdlog::logger> logger)
{
    const std::lock_guard lock(m_mutex);
    m_logger = std::move(logger);
}

void KVKLogProxy::proxyLogMessage(KVKLogLevel level, const char *format,
                                  const platform::LogArguments &arguments)
{
    // Made before the lock is taken: to format may take long, and other threads log, too.
    const Line line{level, platform::formatMessage(format, arguments)};
    const std::lock_guard lock(m_mutex);
    for (const auto &entry : m_sinks) {
        try {
            entry.second(line);
        } catch (...) {
            // One receiver's trouble must not keep the line from the others, and whoever logs cannot mend it.
        }
    }
}

KVKLogProxy::SinkId KVKLogProxy::addSink(Sink sink)
{
    const std::lock_guard lock(m_mutex);
    m_sinks.emplace_back(m_nextId, std::move(sink));
    return m_nextId++;
}

void KVKLogProxy::removeSink(SinkId id)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_sinks, [id](const auto &entry) { return entry.first == id; });
}

KVKLogAnchor *KVKLogGetAnchor()
{
    static KVKLogAnchor anchor;
    return &anchor;
}

KVKLogProxy *KVKLogGetProxy()
{
    static KVKLogProxy proxy;
    return &proxy;
}

spdlog::level::level_enum KVKLogSystemLevel(KVKLogLevel level)
{
    switch (level) {
    case KVKLogLevel::Debug:
        return spdlog::level::debug;
    case KVKLogLevel::Error:
        return spdlog::level::err;
    case KVKLogLevel::Default:
        break;
    }
    return spdlog::level::info;
}

void KVKLogEvent(KVKLogLevel level, const char *format, const platform::LogArguments &arguments)
{
    const std::string message = platform::formatMessage(format, arguments).toStdString();
    writeToSystemLog(level, message);
    KVKLogGetProxy()->proxyLogMessage(level, format, arguments);
}
