#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QString>

#include <memory>
#include <vector>

namespace testsupport {

/// Collects what is logged while it lives, in both places: the system log's handle and the host's log proxy.
///
/// Thread: made and destroyed on one thread; lines may come from, and be asked for on, any.
class LogRecorder
{
public:
    struct Line
    {
        KVKLogLevel level;
        QString message;

        friend bool operator==(const Line &, const Line &) = default;
    };

    LogRecorder();
    ~LogRecorder();
    LogRecorder(const LogRecorder &) = delete;
    LogRecorder &operator=(const LogRecorder &) = delete;

    [[nodiscard]] std::vector<Line> systemLines() const;
    [[nodiscard]] std::vector<Line> proxyLines() const;
    /// Whether a line of this level and text was written to both places.
    [[nodiscard]] bool contains(KVKLogLevel level, const QString &message) const;
    /// How often the line was written; -1 when the two places disagree.
    [[nodiscard]] int count(KVKLogLevel level, const QString &message) const;
    /// Whether any line of the proxy has the text in it.
    [[nodiscard]] bool anyContains(const QString &part) const;
    void clear();

private:
    struct Shared;
    std::shared_ptr<Shared> m_shared;
    KVKLogProxy::SinkId m_sink;
    std::shared_ptr<spdlog::logger> m_before;
};

} // namespace testsupport
