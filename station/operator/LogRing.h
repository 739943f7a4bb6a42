#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QStringList>

#include <deque>
#include <mutex>

namespace station {

/// The last lines of the log proxy, from its construction on.
///
/// Thread: any.
class LogRing
{
public:
    /// How many lines are kept.
    static constexpr int Capacity = 20000;

    LogRing();
    ~LogRing();
    LogRing(const LogRing &) = delete;
    LogRing &operator=(const LogRing &) = delete;

    /// The last lines, as many as asked for and there are, the oldest first.
    [[nodiscard]] QStringList last(qint64 count) const;

private:
    void keep(const QString &line);

    mutable std::mutex m_mutex;
    std::deque<QString> m_lines;
    KVKLogProxy::SinkId m_sink;
};

} // namespace station
