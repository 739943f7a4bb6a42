#include "kovan/KovanLogging/KVKLogging.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <spdlog/sinks/null_sink.h>

namespace {

spdlog::level::level_enum systemLevel(KVKLogLevel level)
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

} // namespace

KVKLogAnchor::KVKLogAnchor()
    : m_logger(std::make_shared<spdlog::logger>("interactive", std::make_shared<spdlog::sinks::null_sink_mt>()))
{
}

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

void KVKLogProxy::proxyLogMessage(KVKLogLevel level, const char *format, const platform::LogArguments &arguments)
{
    const Line line{level, platform::formatMessage(format, arguments)};
    const std::lock_guard lock(m_mutex);
    for (const auto &entry : m_sinks) {
        try {
            entry.second(line);
        } catch (const std::exception &) {
            // One receiver's trouble must not keep the line from the others; it has nobody else to tell.
            continue;
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

void KVKLogEvent(KVKLogLevel level, const char *format, const platform::LogArguments &arguments)
{
    const std::string message = platform::formatMessage(format, arguments).toStdString();
    KVKLogGetAnchor()->logger()->log(systemLevel(level), spdlog::string_view_t(message));
    KVKLogGetProxy()->proxyLogMessage(level, format, arguments);
}
