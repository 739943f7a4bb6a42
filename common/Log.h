#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QList>

#include <utility>

namespace platform {
class View;
}

/// Writes events to both places (the system log's handle and the host's log proxy). Values are handed over as
/// they are and become text on another thread: an owner that replaces its dictionary whole gives what it
/// holds, what is written in place later is given as platform::ownCopy().
namespace interactive::log {

inline void write(KVKLogLevel level, const char *format, platform::LogArguments arguments)
{
    KVKLogEvent(level, format, std::move(arguments));
}
inline void standard(const char *format, platform::LogArguments arguments)
{
    write(KVKLogLevel::Default, format, std::move(arguments));
}
inline void debug(const char *format, platform::LogArguments arguments)
{
    write(KVKLogLevel::Debug, format, std::move(arguments));
}
inline void error(const char *format, platform::LogArguments arguments)
{
    write(KVKLogLevel::Error, format, std::move(arguments));
}

/// Whether anybody would get a line of the level: for arguments that cost something to make.
[[nodiscard]] inline bool isHeard(KVKLogLevel level)
{
    return KVKLogIsHeard(level);
}

/// A view as log lines show it: its class and identifier, "<Button: Pass>"; nothing is "(null)".
[[nodiscard]] QString describe(const platform::View *view);
/// Views in order: "(<Button: Pass>, <TextField: (null)>)".
[[nodiscard]] QString describe(const QList<platform::View *> &views);

} // namespace interactive::log
