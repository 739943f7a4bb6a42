#pragma once

#include "station/window/LogLine.h"

#include <chrono>
#include <deque>
#include <mutex>
#include <span>

namespace station {

/// What was logged and is not in the pane yet. No error is lost on the way, though its line may be.
///
/// Thread: any.
class LogBacklog
{
public:
    LogBacklog(qsizetype mostKept, qsizetype mostAtOnce);

    /// True when somebody has to be told that there is something. Requires: one thread at a time adds.
    [[nodiscard]] bool add(std::span<const KVKLogRecord> records);

    /// What is there, the oldest first.
    struct Share
    {
        QList<LogLine> lines;
        qsizetype leftOut = 0; ///< Lines before these that nobody could have seen.
        bool more = false;     ///< Whether lines remain.
        int errors = 0;        ///< How many have been logged since the last share.
        QString newestError;   ///< As the operator is told it.
    };
    [[nodiscard]] Share take();
    /// Forgets the errors that no share has told of.
    void forgetErrors();

private:
    struct Waiting
    {
        LogLine line; ///< Without its time of day: the time zone is the main thread's to look at.
        std::chrono::system_clock::time_point time;
    };

    const qsizetype m_mostKept;
    const qsizetype m_mostAtOnce;
    std::mutex m_mutex;
    std::deque<Waiting> m_lines;
    qsizetype m_leftOut = 0;
    int m_errors = 0;
    QString m_newestError;
    bool m_told = false;
};

} // namespace station
