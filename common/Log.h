#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QList>

namespace platform {
class View;
}

/// Writes events to both places (the system log's handle and the host's log proxy).
namespace interactive::log {

inline void write(KVKLogLevel level, const char *format, const platform::LogArguments &arguments)
{
    KVKLogEvent(level, format, arguments);
}
inline void standard(const char *format, const platform::LogArguments &arguments)
{
    write(KVKLogLevel::Default, format, arguments);
}
inline void debug(const char *format, const platform::LogArguments &arguments)
{
    write(KVKLogLevel::Debug, format, arguments);
}
inline void error(const char *format, const platform::LogArguments &arguments)
{
    write(KVKLogLevel::Error, format, arguments);
}

/// A view as log lines show it: its class and identifier, "<Button: Pass>"; nothing is "(null)".
[[nodiscard]] QString describe(const platform::View *view);
/// Views in order: "(<Button: Pass>, <TextField: (null)>)".
[[nodiscard]] QString describe(const QList<platform::View *> &views);

} // namespace interactive::log
