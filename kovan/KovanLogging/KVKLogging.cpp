#include "kovan/KovanLogging/KVKLogging.h"

#include "kovan/KovanLogging/KVKLogQueue.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

/// The message goes as data: what looks like a placeholder in it is text of an operator or a script.
void writeToSystemLog(spdlog::logger &logger, KVKLogLevel level, const std::string &message)
{
    try {
        logger.log(KVKLogSystemLevel(level), spdlog::string_view_t(message));
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
          std::make_shared<spdlog::logger>("interactive"))
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

std::shared_ptr<spdlog::logger> KVKLogAnchor::loggerFor(KVKLogLevel level) const
{
    const spdlog::level::level_enum wanted = KVKLogSystemLevel(level);
    const std::lock_guard lock(m_mutex);
    const bool takes = m_logger->should_log(wanted) && !m_logger->sinks().empty();
    return takes || m_logger->should_backtrace() ? m_logger : nullptr;
}

KVKLogProxy::KVKLogProxy()
    : m_queue(std::make_unique<KVKLogQueue>())
{}

KVKLogProxy::~KVKLogProxy() = default;

void KVKLogProxy::proxyLogMessage(KVKLogLevel level, const char *format,
                                  const platform::LogArguments &arguments)
{
    platform::checkFormat(format, arguments.size());
    handOver(level, format, platform::LogArguments(arguments), std::nullopt);
}

/// Requires: the format has been checked. Sinks are told under the lock under which the event takes its place
/// in the queue, so that both see one order.
void KVKLogProxy::handOver(KVKLogLevel level, const char *format, platform::LogArguments &&arguments,
                           std::optional<QString> text)
{
    const bool isReceived = m_queue->isHeard();
    if (isReceived)
        m_queue->waitForRoom();
    std::unique_lock lock(m_mutex, std::defer_lock);
    if (m_sinkCount.load(std::memory_order_relaxed) > 0) {
        // Made before the lock is taken: to format may take long, and other threads log, too.
        if (!text)
            text = platform::formatMessage(format, arguments);
        lock.lock();
        tellSinks({level, *text});
    }
    if (!isReceived)
        return;
    if (text)
        m_queue->push({level, {}, {}, std::move(text)});
    else
        m_queue->push({level, format ? format : "", std::move(arguments), std::nullopt});
    if (m_queue->hasEnded()) {
        // What is static goes just now, and may log: without a thread to do it, the line is handed out here.
        if (lock.owns_lock())
            lock.unlock();
        static_cast<void>(m_queue->flush(std::nullopt));
    }
}

void KVKLogProxy::tellSinks(const Line &line)
{
    for (const auto &entry : m_sinks) {
        try {
            entry.second(line);
        } catch (...) {
            // One receiver's trouble must not keep the line from the others, and whoever logs cannot mend it.
        }
    }
}

bool KVKLogProxy::isHeard() const
{
    return m_queue->isHeard() || m_sinkCount.load(std::memory_order_relaxed) > 0;
}

KVKLogProxy::SinkId KVKLogProxy::addSink(Sink sink)
{
    const std::lock_guard lock(m_mutex);
    m_sinks.emplace_back(m_nextId, std::move(sink));
    ++m_sinkCount;
    return m_nextId++;
}

void KVKLogProxy::removeSink(SinkId id)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_sinks, [id](const auto &entry) { return entry.first == id; });
    m_sinkCount = static_cast<int>(m_sinks.size());
}

KVKLogProxy::ReceiverId KVKLogProxy::addReceiver(Receiver receiver)
{
    return m_queue->add(std::move(receiver));
}

void KVKLogProxy::removeReceiver(ReceiverId id)
{
    m_queue->remove(id);
}

bool KVKLogProxy::flush(std::optional<std::chrono::milliseconds> limit)
{
    return m_queue->flush(limit);
}

void KVKLogProxy::flushInHandler(std::chrono::milliseconds limit) const
{
    m_queue->flushInHandler(limit);
}

void KVKLogProxy::setOwners(std::function<QList<int>()> owners)
{
    m_queue->setOwners(std::move(owners));
}

// Neither is destroyed: what is static may log in its destructor.

KVKLogAnchor *KVKLogGetAnchor()
{
    static KVKLogAnchor *const anchor = std::make_unique<KVKLogAnchor>().release();
    return anchor;
}

KVKLogProxy *KVKLogGetProxy()
{
    static KVKLogProxy *const proxy = std::make_unique<KVKLogProxy>().release();
    static const struct Ending
    {
        ~Ending() { proxy->m_queue->end(); }
    } ending;
    return proxy;
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
    KVKLogEvent(level, format, platform::LogArguments(arguments));
}

void KVKLogEvent(KVKLogLevel level, const char *format, platform::LogArguments &&arguments)
{
    platform::checkFormat(format, arguments.size());
    std::optional<QString> text;
    if (const auto logger = KVKLogGetAnchor()->loggerFor(level)) {
        text = platform::formatMessage(format, arguments);
        writeToSystemLog(*logger, level, text->toStdString());
    }
    KVKLogGetProxy()->handOver(level, format, std::move(arguments), std::move(text));
}

bool KVKLogIsHeard(KVKLogLevel level)
{
    return KVKLogGetProxy()->isHeard() || KVKLogGetAnchor()->loggerFor(level);
}
