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

    /// The last lines, as many as asked for and there are, the oldest first; among them all that were logged
    /// before the call.
    [[nodiscard]] QStringList last(qint64 count) const;

private:
    void keep(std::span<const KVKLogRecord> lines);

    mutable std::mutex m_mutex;
    std::deque<QString> m_lines;
    KVKLogProxy::ReceiverId m_receiver;
};

} // namespace station
