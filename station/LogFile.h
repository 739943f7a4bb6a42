#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QString>

namespace station {

/// Where the station's logs go: the log proxy's lines with time, level and thread to a file, and the system
/// log's errors to the standard error output. A message with line breaks is one entry, its further lines are
/// indented.
///
/// Thread: made and destroyed on the main thread; lines come from any.
class LogFile
{
public:
    /// An empty path writes no file. Errors: throws StationError when the file cannot be written.
    explicit LogFile(const QString &path);
    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

private:
    std::shared_ptr<spdlog::logger> m_file;
    KVKLogProxy::SinkId m_sink = 0;
};

} // namespace station
