#include "tests/support/LogRecorder.h"

#include <spdlog/sinks/base_sink.h>

#include <algorithm>
#include <mutex>

namespace testsupport {

struct LogRecorder::Shared
{
    mutable std::mutex mutex;
    std::vector<Line> system;
    std::vector<Line> proxy;
};

namespace {

KVKLogLevel levelOf(spdlog::level::level_enum level)
{
    if (level == spdlog::level::err)
        return KVKLogLevel::Error;
    return level == spdlog::level::debug ? KVKLogLevel::Debug : KVKLogLevel::Default;
}

/// Hands each line of the system log to a function, as it was written.
class ForwardingSink : public spdlog::sinks::base_sink<std::mutex>
{
public:
    explicit ForwardingSink(std::function<void(const LogRecorder::Line &)> receiver)
        : m_receiver(std::move(receiver))
    {}

protected:
    void sink_it_(const spdlog::details::log_msg &message) override
    {
        m_receiver(
            {levelOf(message.level),
             QString::fromUtf8(message.payload.data(), static_cast<qsizetype>(message.payload.size()))});
    }
    void flush_() override {}

private:
    std::function<void(const LogRecorder::Line &)> m_receiver;
};

int occurrences(const std::vector<LogRecorder::Line> &lines, const LogRecorder::Line &line)
{
    return static_cast<int>(std::count(lines.cbegin(), lines.cend(), line));
}

} // namespace

LogRecorder::LogRecorder()
    : m_shared(std::make_shared<Shared>())
    , m_before(KVKLogGetAnchor()->logger())
{
    auto sink = std::make_shared<ForwardingSink>([shared = m_shared](const Line &line) {
        const std::lock_guard lock(shared->mutex);
        shared->system.push_back(line);
    });
    auto logger = std::make_shared<spdlog::logger>("recorder", sink);
    logger->set_level(spdlog::level::trace);
    KVKLogGetAnchor()->setLogger(logger);
    m_sink = KVKLogGetProxy()->addSink([shared = m_shared](const KVKLogProxy::Line &line) {
        const std::lock_guard lock(shared->mutex);
        shared->proxy.push_back({line.level, line.message});
    });
}

LogRecorder::~LogRecorder()
{
    KVKLogGetProxy()->removeSink(m_sink);
    KVKLogGetAnchor()->setLogger(m_before);
}

std::vector<LogRecorder::Line> LogRecorder::systemLines() const
{
    const std::lock_guard lock(m_shared->mutex);
    return m_shared->system;
}

std::vector<LogRecorder::Line> LogRecorder::proxyLines() const
{
    const std::lock_guard lock(m_shared->mutex);
    return m_shared->proxy;
}

bool LogRecorder::contains(KVKLogLevel level, const QString &message) const
{
    return count(level, message) > 0;
}

int LogRecorder::count(KVKLogLevel level, const QString &message) const
{
    const int inSystem = occurrences(systemLines(), {level, message});
    const int inProxy = occurrences(proxyLines(), {level, message});
    return inSystem == inProxy ? inSystem : -1;
}

bool LogRecorder::anyContains(const QString &part) const
{
    const std::vector<Line> lines = proxyLines();
    return std::any_of(lines.cbegin(), lines.cend(),
                       [&](const Line &line) { return line.message.contains(part); });
}

void LogRecorder::clear()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->system.clear();
    m_shared->proxy.clear();
}

} // namespace testsupport
