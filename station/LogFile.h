#pragma once

#include "kovan/KovanLogging/KVKLogCrashGuard.h"
#include "kovan/KovanLogging/KVKLogging.h"

#include <QString>

#include <optional>

namespace station {

/// Where the station's logs go: the log proxy's lines with time, level and thread to a file, and the system
/// log's errors to the standard error output. A message with line breaks is one entry, its further lines are
/// indented.
///
/// The file is written by the log's thread, in the order of the events and with their times and threads; it
/// is complete when this is gone, and at a crash. Thread: made and destroyed on the main thread; lines come
/// from any.
class LogFile
{
public:
    /// An empty path writes no file. Errors: throws StationError when the file cannot be written.
    explicit LogFile(const QString &path);
    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

private:
    class Writer;

    std::optional<KVKLogCrashGuard> m_crashGuard;
    std::optional<KVKLogProxy::ReceiverId> m_receiver;
};

} // namespace station
